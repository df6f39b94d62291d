// Printing where the printer goes away. The tests of this file leave the machine without one, so they have it alone.
#include "forms/print/frmInterval.h"

#include "settings/registerModule.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/PrinterDialogUser.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <winspool.h>

#include <string>

namespace {

void RemovePrinter(std::wstring name) // OpenPrinter wants it writable
{
    PRINTER_DEFAULTSW rights{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    if (OpenPrinterW(name.data(), &printer, &rights) != FALSE) {
        DeletePrinter(printer);
        ClosePrinter(printer);
    }
}

frmInterval& Open()
{
    const auto form = The<frmInterval>();
    form->Show();
    return *form;
}

bool IsOpen()
{
    return !Form::OpenForms().empty();
}

} // namespace

TEST(PrinterGone, LeavesTheDialogOpenWhenThePrinterIsRemovedBeforeThePrinting)
{
    frmInterval& form = Open();
    {
        const auto user = PrinterDialogUser::WhoPrintsAfter([] { RemovePrinter(L"Paper"); });
        MessageBoxWatcher boxes;
        SendMessageW(form.addButton.Handle(), BM_CLICK, 0, 0);
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(JobsEverQueued(), 0U);
    form.Unload();
}

TEST(PrinterGone, LeavesTheDialogOpenWhenThereIsNoPrinter)
{
    RemovePrinter(L"Paper");
    RemovePrinter(L"Other");
    frmInterval& form = Open();
    form.Text2.SetText(L"Stored all the same");
    MessageBoxWatcher boxes;
    SendMessageW(form.addButton.Handle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(IsOpen());
    for (const SeenMessageBox& box : boxes.Seen()) {
        EXPECT_EQ(box.text.find(L"Run-time error"), std::wstring::npos) << "the program itself says nothing";
    }
    EXPECT_EQ(registerModule::GetRegistryValue(L"Print", L"Heading", L""), L"Stored all the same");
    EXPECT_EQ(JobsEverQueued(), 0U);
    form.Unload();
}
