// Damages every setting that the program reads in every way. The program starts, opens its windows and prints its
// report with the rest of the value or with its default, or shows the run-time error of an invalid number. The journal
// file is unchanged.

#include "app/Module1.h"
#include "forms/main/frmMain.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/windows/UnhandledError.h"
#include "tests/forms/ProgramUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RecordedPages.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>

namespace {

constexpr const wchar_t* programKey = L"Software\\Velmora\\Tav\\";
constexpr const char* journal = "2004-03-15     12 Office\r\n";

struct Setting {
    std::wstring section;
    std::wstring name;
    std::string usual;
    std::string byDefault;
};

const std::array<Setting, 9> settings{{{L"Settings", L"Langdenhet", "mil", "km"},
                                       {L"Settings", L"Language", "100", "0"},
                                       {L"Userinfo", L"Company", "Bageriet", ""},
                                       {L"Userinfo", L"Name", "Eva", ""},
                                       {L"Userinfo", L"Surname", "Berg", ""},
                                       {L"Userinfo", L"Aktiverat_personnummer", "1", "0"},
                                       {L"Userinfo", L"Personnummer", "640823-3234", ""},
                                       {L"Print", L"Heading", "Trips", ""},
                                       {L"Print", L"UseDefaultHeading", "False", "True"}}};

struct Damage {
    std::string name;
    int type;          ///< REG_..., or missing
    std::string bytes; ///< all bytes of the value; a text has a terminator only if it is written here
};

/// All bytes of a literal, including nulls.
template <std::size_t size>
std::string Raw(const char (&bytes)[size]) // NOLINT(modernize-avoid-c-arrays): the type of a literal
{
    return {bytes, size - 1};
}

constexpr int missing = -1;

std::vector<Damage> AllDamages()
{
    std::vector<Damage> damages{{"missing", missing, ""},
                                {"number that reads 100", REG_DWORD, Raw("100\0")},
                                {"number 1", REG_DWORD, Raw("\1\0\0\0")},
                                {"number without an end", REG_DWORD, "abcd"},
                                {"long number", REG_QWORD, Raw("1\0\0\0\0\0\0\0")},
                                {"list", REG_MULTI_SZ, Raw("one\0two\0\0")},
                                {"variable", REG_EXPAND_SZ, "%PATH%"},
                                {"nothing of any type", REG_NONE, "text"},
                                {"bytes", REG_BINARY, "100"},
                                {"bytes that are no text", REG_BINARY, std::string(16, '\xff')},
                                {"terminated", REG_SZ, Raw("100\0")},
                                {"terminated early", REG_SZ,
                                 Raw("1\0"
                                     "00")},
                                {"lines", REG_SZ, "one\r\ntwo\ttabs"}};
    for (const int type : {REG_SZ, REG_BINARY, REG_MULTI_SZ, REG_EXPAND_SZ, REG_DWORD, REG_NONE}) {
        damages.push_back({"empty", type, ""});
    }
    for (const std::size_t length : {254U, 255U, 256U, 100000U}) {
        for (const int type : {REG_SZ, REG_EXPAND_SZ, REG_BINARY}) {
            damages.push_back({"long text", type, std::string(length, 'x')});
            damages.push_back({"long number", type, std::string(length, '1')});
        }
    }
    for (const char* text : {"text", "1x",  "&H1", "99999", "-99999", "1E300", "1E999", "-1",   "2",  "77", "32000",
                             "0.5",  "1.5", " 1 ", "1E2",   "100",    "0",     "True",  "true", "-0", "."}) {
        damages.push_back({"text", REG_SZ, text});
    }
    return damages;
}

/// The text that the program reads from a value: up to the first null in the first 255 bytes.
std::string TextOf(const Damage& damage, const Setting& setting)
{
    constexpr std::size_t room = 255;
    if (damage.type == missing || damage.bytes.size() > room) {
        return setting.byDefault;
    }
    std::string buffer = damage.bytes;
    buffer.resize(room, '\0');
    const std::size_t end = buffer.find('\0');
    return end == std::string::npos ? "" : buffer.substr(0, end);
}

std::wstring Wide(const std::string& text)
{
    std::wstring wide;
    for (const char character : text) {
        wide += static_cast<wchar_t>(static_cast<unsigned char>(character));
    }
    return wide;
}

/// A text as a 16-bit number, or the error of its conversion.
struct Number {
    explicit Number(const std::string& text)
    {
        const std::string_view allowed = "0123456789+-.E ";
        const bool plain = std::ranges::all_of(text, [&](char c) { return allowed.find(c) != std::string_view::npos; });
        char* end = nullptr;
        const double number = std::strtod(text.c_str(), &end);
        const bool whole =
            end != text.c_str() &&
            text.find_first_not_of(' ', static_cast<std::size_t>(end - text.c_str())) == std::string::npos;
        if (!plain || !whole) {
            error = ErrorNumber::TypeMismatch;
        } else if (std::nearbyint(number) < -32768 || std::nearbyint(number) > 32767) {
            error = ErrorNumber::Overflow;
        } else {
            value = static_cast<int>(std::nearbyint(number));
        }
    }

    std::optional<ErrorNumber> error;
    int value = 0;
};

class RegistrySoak : public ProgramUnderTest {
protected:
    void TearDown() override { report_.Did(starts_, "starts with a damaged setting"); }

    static void Write(const Setting& setting, int type, const std::string& bytes)
    {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, (programKey + setting.section).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                        &key, nullptr);
        // Windows adds a terminator to a text if one follows it in the buffer, so a period follows.
        const std::string data = bytes + '.';
        const LSTATUS status = RegSetValueExA(key, std::string(setting.name.begin(), setting.name.end()).c_str(), 0,
                                              static_cast<DWORD>(type), reinterpret_cast<const BYTE*>(data.data()),
                                              static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
        ASSERT_EQ(status, ERROR_SUCCESS);
    }

    /// Stores usual values, except for the damaged one.
    void Store(const Setting& damaged, const Damage& damage)
    {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Velmora");
        texts_.clear();
        for (const Setting& setting : settings) {
            const bool isDamaged = setting.name == damaged.name;
            texts_[setting.name] = isDamaged ? TextOf(damage, setting) : setting.usual;
            if (!isDamaged) {
                Write(setting, REG_SZ, setting.usual);
            } else if (damage.type != missing) {
                Write(setting, damage.type, damage.bytes);
            }
        }
    }

    std::wstring Expected(const std::wstring& name) const { return Wide(texts_.at(name)); }

    /// The error with which the start fails, if it does.
    std::optional<ErrorNumber> ErrorOfStart() const
    {
        const Number language(texts_.at(L"Language"));
        if (language.error) {
            return language.error;
        }
        if (language.value > 32767 - 1000) {
            return ErrorNumber::Overflow;
        }
        return language.value == 0 || language.value == 100 ? std::nullopt
                                                            : std::optional(ErrorNumber::ResourceNotFound);
    }

    void StartOnce()
    {
        WriteBytes(JournalFile(), journal);
        const std::size_t before = boxes.Seen().size();
        const bool started = Guarded(Module1::LoadSettings);
        ++starts_;
        const auto error = ErrorOfStart();
        ASSERT_EQ(started, !error);
        ASSERT_EQ(IsOpen(), !error);
        ASSERT_EQ(boxes.Seen().size() - before, error ? 1u : 0u);
        if (error) {
            const std::wstring number = std::to_wstring(static_cast<int>(*error));
            EXPECT_THAT(boxes.Texts().back(), testing::StartsWith(L"Run-time error '" + number + L"':"));
        } else {
            LookAround();
        }
    }

    void LookAround()
    {
        EXPECT_EQ(Module1::distanceUnit, Expected(L"Langdenhet"));
        EXPECT_EQ(Text(Main().Label4.Handle()), Expected(L"Langdenhet"));
        EXPECT_EQ(Module1::languageOffset, Number(texts_.at(L"Language")).value);
        OpenSettings();
        OpenUserinfo();
        OpenInterval();
    }

    void OpenSettings()
    {
        const auto form = Instance<frmSettings>();
        form->Load();
        EXPECT_EQ(form->Option1[0].Value(), Expected(L"Langdenhet") == L"km");
        EXPECT_EQ(form->Option2[0].Value(), Module1::languageOffset == 0);
        UnloadInstance<frmSettings>();
    }

    void OpenUserinfo()
    {
        const Number used(texts_.at(L"Aktiverat_personnummer"));
        const auto form = Instance<frmUserinfo>();
        ASSERT_EQ(ErrorOf([&] { form->Load(); }), used.error);
        if (!used.error) {
            EXPECT_EQ(form->Text9.Text(), Expected(L"Company"));
            EXPECT_EQ(form->Text1.Text(), Expected(L"Name"));
            EXPECT_EQ(form->Text2.Text(), Expected(L"Surname"));
            EXPECT_EQ(form->Text3.Text(), Expected(L"Personnummer"));
            EXPECT_EQ(form->Text3.Enabled(), used.value == 1);
        }
        UnloadInstance<frmUserinfo>();
    }

    void OpenInterval()
    {
        const auto form = Instance<frmInterval>();
        form->Load();
        EXPECT_EQ(form->Text2.Text(), Expected(L"Heading"));
        EXPECT_EQ(form->Option1[0].Value(), Expected(L"UseDefaultHeading") == L"True");
        const auto recording = std::make_shared<Recording>();
        form->SelectPrinter(Printer(RecordPages(recording)));
        EXPECT_FALSE(ErrorOf([&] { form->PrintJournal(); }));
        ASSERT_FALSE(recording->pages.empty());
        const std::wstring label = Module1::languageOffset == 100 ? L"Personnummer:" : L"Social security number:";
        const bool printed = std::ranges::any_of(recording->pages.front().texts, [&](const DrawnText& drawn) {
            return drawn.text.find(label) != std::wstring::npos;
        });
        const Number used(texts_.at(L"Aktiverat_personnummer"));
        EXPECT_EQ(printed, !used.error && used.value == 1);
        UnloadInstance<frmInterval>();
    }

    /// Closes the program and expects an unchanged journal file.
    void EndIt()
    {
        UnloadInstance<frmMain>();
        ASSERT_THAT(Form::OpenForms(), testing::IsEmpty());
        ASSERT_EQ(SavedJournal(), journal);
    }

    std::map<std::wstring, std::string> texts_; ///< the texts that the program reads, by the name of the value
    std::int64_t starts_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(RegistrySoak, ADamagedSettingHasItsRestItsDefaultOrShowsAnError)
{
    const std::vector<Damage> damages = AllDamages();
    // The short slice tests each damage with one value, another each time.
    const auto step = static_cast<std::size_t>(Amount(25, 1));
    for (std::size_t i = Seed() % step; i < damages.size() * settings.size(); i += step) {
        const Setting& setting = settings.at(i % settings.size());
        const Damage& damage = damages.at(i / settings.size());
        SCOPED_TRACE(testing::PrintToString(setting.name) + ": " + damage.name + " of type " +
                     std::to_string(damage.type) + ", " + std::to_string(damage.bytes.size()) +
                     " bytes: " + damage.bytes.substr(0, 40));
        ASSERT_NO_FATAL_FAILURE(Store(setting, damage));
        StartOnce();
        EndIt();
    }
}
