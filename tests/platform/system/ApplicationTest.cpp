#include "platform/system/Application.h"
#include "platform/system/CheckedArithmetic.h"
#include "platform/system/Clock.h"
#include "platform/system/ModulePath.h"
#include "platform/system/PreviousInstance.h"
#include "platform/system/SystemLibrary.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <windows.h>

TEST(Application, IsCalledOdomira)
{
    EXPECT_STREQ(ApplicationTitle(), L"Odomira");
    EXPECT_EQ(ProductName(), L"Odomira");
}

TEST(Application, ItsFolderIsThatOfTheProgramFileWhereverItWasStarted)
{
    const std::filesystem::path startFolder = std::filesystem::current_path();
    const TemporaryFolder elsewhere;
    std::filesystem::current_path(elsewhere.Path());
    EXPECT_EQ(ProgramFolder(), std::filesystem::path(ModulePath()).parent_path().wstring());
    std::filesystem::current_path(startFolder);
}

TEST(Application, DISABLED_Child_ItsFolderIsTheRootOfADrive)
{
    EXPECT_EQ(ProgramFolder(), L"C:\\");
}

TEST(Application, TheRootOfADriveKeepsItsSeparator)
{
    const std::wstring copy = L"C:\\application_test_copy.exe";
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), copy.c_str(), FALSE));
    EXPECT_EQ(RunInChildProcess(L"Application.DISABLED_Child_ItsFolderIsTheRootOfADrive", copy), 0);
    DeleteFileW(copy.c_str());
}

TEST(Application, DISABLED_Child_FindsAPlantedLibrary)
{
    EXPECT_NE(LoadLibraryW(L"planted.dll"), nullptr);
}

TEST(Application, DISABLED_Child_FindsTheSystemsLibrariesOnly)
{
    LoadLibrariesFromSystemFolderOnly();
    EXPECT_EQ(LoadLibraryW(L"planted.dll"), nullptr);
    EXPECT_NE(LoadLibraryW(L"version.dll"), nullptr) << "the system's own library is not found";
}

TEST(Application, ALibraryBesideTheProgramIsNotLoadedOnceTheSearchIsLimited)
{
    const TemporaryFolder folder;
    const std::wstring copy = folder.File(L"application_test.exe");
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), copy.c_str(), FALSE));
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), folder.File(L"planted.dll").c_str(), FALSE));
    EXPECT_EQ(RunInChildProcess(L"Application.DISABLED_Child_FindsAPlantedLibrary", copy), 0);
    EXPECT_EQ(RunInChildProcess(L"Application.DISABLED_Child_FindsTheSystemsLibrariesOnly", copy), 0);
}

TEST(Application, DISABLED_Child_TakesAFunctionFromTheSystemFolder)
{
    ASSERT_EQ(GetModuleHandleW(L"dbghelp.dll"), nullptr) << "loaded with the program, so nothing is looked for";
    const void* function = SystemFunctionAddress(L"dbghelp.dll", "SymInitializeW");
    ASSERT_NE(function, nullptr);
    HMODULE owner = nullptr;
    ASSERT_TRUE(
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<LPCWSTR>(function), &owner));
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(owner, path.data(), MAX_PATH));
    EXPECT_EQ(std::filesystem::path(path).parent_path().filename(), L"system32");
}

TEST(Application, AFunctionIsTakenFromTheSystemFolderAlsoWhereALibraryOfThatNameLiesBesideTheProgram)
{
    const TemporaryFolder folder;
    const std::wstring copy = folder.File(L"application_test.exe");
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), copy.c_str(), FALSE));
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), folder.File(L"dbghelp.dll").c_str(), FALSE));
    EXPECT_EQ(RunInChildProcess(L"Application.DISABLED_Child_TakesAFunctionFromTheSystemFolder", copy), 0);
}

TEST(Application, AMissingFunctionOrLibraryOfTheSystemIsNull)
{
    EXPECT_EQ(SystemFunctionAddress(L"dbghelp.dll", "NoSuchFunction"), nullptr);
    EXPECT_EQ(SystemFunctionAddress(L"no-such-library.dll", "SymInitializeW"), nullptr);
}

TEST(Application, TheVersionIsReadFromTheRecordOfTheProgramFile)
{
    const Version version = VersionNumbers();
    EXPECT_EQ(version.major, ODOMIRA_VERSION_MAJOR);
    EXPECT_EQ(version.minor, ODOMIRA_VERSION_MINOR);
    EXPECT_EQ(version.revision, ODOMIRA_VERSION_PATCH);
}

TEST(PreviousInstance, DISABLED_Child_FindsOne)
{
    EXPECT_TRUE(PreviousInstance());
    EXPECT_TRUE(PreviousInstance());
}

TEST(PreviousInstance, DISABLED_Child_FindsNone)
{
    EXPECT_FALSE(PreviousInstance());
}

TEST(PreviousInstance, TheSecondStartFindsTheFirstWhileItRuns)
{
    EXPECT_EQ(RunInChildProcess(L"PreviousInstance.DISABLED_Child_FindsNone"), 0);
    EXPECT_FALSE(PreviousInstance());
    EXPECT_FALSE(PreviousInstance()) << "the program takes itself for another";
    EXPECT_EQ(RunInChildProcess(L"PreviousInstance.DISABLED_Child_FindsOne"), 0);

    std::wstring inCapitals = ModulePath();
    CharUpperBuffW(inCapitals.data(), static_cast<DWORD>(inCapitals.size()));
    EXPECT_EQ(RunInChildProcess(L"PreviousInstance.DISABLED_Child_FindsOne", inCapitals), 0);
}

TEST(PreviousInstance, TheSameProgramFileIsFoundUnderAnotherDriveLetter)
{
    EXPECT_FALSE(PreviousInstance());
    const char* machine = std::getenv("WINEPREFIX");
    ASSERT_NE(machine, nullptr) << "run through tools/machine/in-wine";
    // Drive Z: is the host's root, and so holds drive C: too.
    const std::wstring otherPath =
        std::filesystem::path("Z:" + std::string(machine) + "\\drive_c").make_preferred().wstring() +
        ModulePath().substr(std::wstring_view(L"C:").size());
    EXPECT_EQ(RunInChildProcess(L"PreviousInstance.DISABLED_Child_FindsOne", otherPath), 0);
}

TEST(PreviousInstance, ACopyInAnotherFolderIsAnotherProgram)
{
    EXPECT_FALSE(PreviousInstance());
    const TemporaryFolder folder;
    const std::wstring copy = folder.File(L"application_test.exe");
    ASSERT_TRUE(CopyFileW(ModulePath().c_str(), copy.c_str(), FALSE));
    EXPECT_EQ(RunInChildProcess(L"PreviousInstance.DISABLED_Child_FindsNone", copy), 0);
}

TEST(Clock, ReturnsLocalTimeUnlessItIsStopped)
{
    Clock::StandStillAt({2004, 2, 29});
    EXPECT_EQ(Clock::Today(), (CalendarDay{2004, 2, 29}));
    Clock::RunAgain();

    SYSTEMTIME before{};
    SYSTEMTIME after{};
    CalendarDay today;
    do { // again if midnight came in between
        GetLocalTime(&before);
        today = Clock::Today();
        GetLocalTime(&after);
    } while (before.wDay != after.wDay);
    EXPECT_EQ(today.year, before.wYear);
    EXPECT_EQ(today.month, before.wMonth);
    EXPECT_EQ(today.day, before.wDay);
}

TEST(CheckedArithmetic, StopsAtTheLimitsInsteadOfWrapping)
{
    EXPECT_EQ(CheckedInt16(32767), 32767);
    EXPECT_EQ(CheckedInt16(-32768), -32768);
    EXPECT_EQ(ErrorOf([] { CheckedInt16(32768); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { CheckedInt16(-32769); }), ErrorNumber::Overflow);
    EXPECT_EQ(CheckedInt32(2147483647), 2147483647);
    EXPECT_EQ(ErrorOf([] { CheckedInt32(2147483648); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { CheckedInt32(-2147483649); }), ErrorNumber::Overflow);
}

TEST(RuntimeErrors, SayTheirDescriptionAndTheNumberOfTheSystemsCause)
{
    EXPECT_EQ(RuntimeError(ErrorNumber::TypeMismatch).Description(), L"Type mismatch");
    EXPECT_EQ(RuntimeError(ErrorNumber::FileAlreadyOpen).Description(), L"File already open");
    EXPECT_EQ(RuntimeError(ErrorNumber::ResourceNotFound).Number(), ErrorNumber::ResourceNotFound);
    EXPECT_EQ(ErrorFromWin32(ERROR_FILE_NOT_FOUND), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorFromWin32(ERROR_ACCESS_DENIED), ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorFromWin32(ERROR_SHARING_VIOLATION), ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorFromWin32(ERROR_DISK_FULL), ErrorNumber::DiskFull);
    EXPECT_EQ(ErrorFromWin32(ERROR_GEN_FAILURE), ErrorNumber::DeviceIoError);
}
