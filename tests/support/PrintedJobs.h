#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A word on printed paper, in twips from the top left of the sheet.
struct PrintedWord {
    int page; ///< counted from 1
    std::wstring text;
    double left;
    double right;
    double baseline;
    double points; ///< size of the type
    std::string font;
};

/// A job that came out of one of the machine's printers.
struct PrintedJob {
    std::wstring title;
    int copies = 0;
    std::wstring printer;
    std::filesystem::path pdf;

    std::vector<PrintedWord> Words() const;
};

/// One page of a job as a grey picture.
class PagePicture {
public:
    PagePicture(const PrintedJob& job, int page);

    /// Brightness at a place given in twips: 0 is black, 255 is white.
    int At(double x, double y) const;

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<unsigned char> pixels_;
};

/// Waits until the printers have put out at least `count` jobs on this machine and returns all of them, oldest first.
std::vector<PrintedJob> WaitForJobs(std::size_t count);

/// Jobs that the print queue knows of in any state, whether they came out or not.
std::size_t JobsEverQueued();

/// Takes away what was printed into a file, and returns it. Where Windows asks for the file's name, Wine gives the file
/// that of the port, "FILE:", and puts it into the folder where the program runs.
std::string TakePrintedFile();
