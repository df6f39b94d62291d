#pragma once

#include "data/DataInterface.h"
#include "forms/print/frmInterval.h"
#include "tests/support/RecordedPages.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// A print dialog over an empty journal and empty registry sections, with the texts and unit of one language.
class ReportTest : public testing::Test {
public:
    ReportTest();
    ~ReportTest() override;
    ReportTest(const ReportTest&) = delete;
    ReportTest& operator=(const ReportTest&) = delete;

protected:
    frmInterval& Form() { return *form_; }
    void SpeakSwedish();
    static void SetUserInfo(const std::wstring& value, const std::wstring& text);
    static void Choose(frmInterval& form, const CalendarDay& from, const CalendarDay& to);

    /// Prints the interval and returns the recorded pages. Measures lines and the printable width on the same printer.
    const std::vector<RecordedPage>& Print(const CalendarDay& from, const CalendarDay& to);

    double width_ = 0;   ///< printable width in twips
    double bigLine_ = 0; ///< height of a line of 20 points
    double line_ = 0;    ///< height of a line of 12 points
    std::shared_ptr<Recording> recording_;

private:
    std::shared_ptr<frmInterval> form_;
};

/// The text on a page, or a failure of the running test.
const DrawnText& TextOf(const RecordedPage& page, const std::wstring& text);
bool HasText(const RecordedPage& page, const std::wstring& text);
bool HasLine(const RecordedPage& page, double x1, double y1, double x2, double y2, int width);
std::string LinesAt(const RecordedPage& page, double y);
