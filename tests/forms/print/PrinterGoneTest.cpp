// Printing without a printer. The tests of this file delete the printers of their machine, so no other test uses it.
#include "forms/print/frmInterval.h"

#include "settings/registerModule.h"
#include "tests/support/FormUser.h"
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
    const auto form = Instance<frmInterval>();
    form->Show();
    return *form;
}

bool IsOpen()
{
    return !Form::OpenForms().empty();
}

} // namespace

TEST(PrinterGone, LeavesTheDialogOpenWhenThePrinterIsDeletedBeforePrinting)
{
    frmInterval& form = Open();
    form.Text2.SetFocus();
    {
        const auto user = PrinterDialogUser::ToPrintAfter([] { RemovePrinter(L"Paper"); });
        MessageBoxWatcher boxes;
        SendMessageW(form.addButton.Handle(), BM_CLICK, 0, 0);
    }
    EXPECT_TRUE(IsOpen());
    Await([&] { return GetFocus() == form.addButton.Handle(); }, "the focus on Print, for a second try");
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
        EXPECT_EQ(box.text.find(L"Run-time error"), std::wstring::npos) << "the program shows no message of its own";
    }
    EXPECT_EQ(registerModule::GetRegistryValue(L"Print", L"Heading", L""), L"Stored all the same");
    EXPECT_EQ(JobsEverQueued(), 0U);
    form.Unload();
}
