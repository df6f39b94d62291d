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

/// The area of a word on its sheet, in twips from the top left of the sheet in portrait: words printed in landscape are
/// rotated.
struct WordOnSheet {
    int page; ///< counted from 1
    std::wstring text;
    double left;
    double top;
    double right;
    double bottom;
    double sheetWidth;
    double sheetHeight;
};

/// A job that one of the machine's printers has printed.
struct PrintedJob {
    std::wstring title;
    int copies = 0;
    std::wstring printer;
    std::filesystem::path pdf;

    std::vector<PrintedWord> Words() const;
    /// The same words, read by a program that also reads rotated text.
    std::vector<WordOnSheet> WordsOnSheets() const;
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

/// Waits until the printers of this machine have printed at least `count` jobs and returns all jobs, oldest first.
std::vector<PrintedJob> WaitForJobs(std::size_t count);

/// The number of jobs in the print queue, in any state.
std::size_t JobsEverQueued();

/// The folder of the printed pages, as a Windows path.
std::filesystem::path PrintedFolder();

/// Deletes the file that a job was printed to, and returns its content. Wine 8 does not ask for a name: it writes a
/// file with the name of the port, "FILE:", to the current folder of the program.
std::string TakePrintedFile(const std::filesystem::path& path);
