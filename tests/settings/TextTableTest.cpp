#include "settings/TextTable.h"
#include "app/Module1.h"
#include "forms/LocalText.h"
#include "settings/TextIds.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>

#include <limits>
#include <set>
#include <vector>

#include <windows.h>

namespace {

struct Row {
    std::int16_t id;
    const wchar_t* english;
    const wchar_t* swedish;
};

/// The same item of the dialog that edits a day.
constexpr std::int16_t InEdit(std::int16_t itemOfAdd)
{
    return static_cast<std::int16_t>(itemOfAdd - text::add::caption + text::edit::caption);
}

// What users read, independent of the resource file.
const std::vector<Row> table{
    {text::languageName, L"English", L"Svenska"},
    {text::main::file, L"File", L"Arkiv"},
    {text::main::edit, L"Edit", L"Redigera"},
    {text::main::help, L"Help", L"Hjälp"},
    {text::main::revert, L"Revert", L"Återgå"},
    {text::main::save, L"Save", L"Spara"},
    {text::main::print, L"Print...", L"Skriv ut..."},
    {text::main::exit, L"Exit", L"Avsluta"},
    {text::main::settings, L"Settings...", L"Inställningar..."},
    {text::main::employeeInformation, L"Employee information...", L"Personinformation..."},
    {text::main::onTheWeb, L"On the Web", L"På Internet"},
    {text::main::about, L"About", L"Om"},
    {text::main::date, L"date", L"Datum"},
    {text::main::numberOf, L"# of", L"Antal"},
    {text::main::kilometres, L"km", L"km"},
    {text::main::milesOrMil, L"miles", L"mil"},
    {text::main::route, L"route", L"Färdväg"},
    {text::main::deleteDay, L"Delete", L"Ta bort"},
    {text::main::editDay, L"Edit...", L"Redigera..."},
    {text::main::addDay, L"Add...", L"Lägg till..."},
    {text::main::chooseDayToDelete, L"Choose day to delete.", L"Välj dag att ta bort."},
    {text::main::confirmDelete, L"Do you want to delete selected day?", L"Vill du ta bort vald dag?"},
    {text::main::chooseDayToEdit, L"Choose day to edit.", L"Välj dag att redigera."},
    {text::main::total, L"Total:", L"Totalt:"},
    {text::main::saveLastChanges, L"Save last changes?", L"Vill du spara de senaste ändringarna?"},
    {text::main::confirmRevert, L"Revert to last time you saved?", L"Återgå till senaste gången du sparade?"},
    {text::main::otherPrograms, L"Other program from Brenholt", L"Andra program av Brenholt"},
    {text::main::couldNotLoadBrowser, L"Couldn't load browser. Please manually go to",
     L"Kunde inte starta web-läsaren. Var vänlig gå till Internet-adressen"},
    {text::about::caption, L"About", L"Om"},
    {text::about::developer, L"Developer:", L"Utvecklare:"},
    {text::add::caption, L"Add", L"Lägg till"},
    {text::add::year, L"Year", L"År"},
    {text::add::month, L"Month", L"Månad"},
    {text::add::day, L"Day", L"Dag"},
    {text::add::distance, L"# of", L"Antal"},
    {text::add::route, L"Route", L"Färdväg"},
    {text::add::cancel, L"Cancel", L"Avbryt"},
    {text::add::mustChooseDay, L"You must choose a day.", L"Du måste välja en dag."},
    {text::add::onlyNumbers, L"Only integers and decimal numbers.", L"Endast heltal eller decimaltal."},
    {text::add::numberOf, L"Number of", L"Antal körda"},
    {text::add::mustBePositive, L"must be positive.", L"måste vara positivt."},
    {text::add::onlySpecifyNumberOf, L"You can only specify the number of", L"Du kan endast ange antal körda"},
    {text::add::withSixCharacters, L"with six (6) characters.", L"med sex (6) tecken."},
    {text::add::youHaveUsed, L"You have used", L"Du har använt"},
    {text::edit::caption, L"Edit", L"Redigera"},
    {InEdit(text::add::year), L"Year", L"År"},
    {InEdit(text::add::month), L"Month", L"Månad"},
    {InEdit(text::add::day), L"Day", L"Dag"},
    {InEdit(text::add::distance), L"Number of", L"Antal"},
    {InEdit(text::add::route), L"Route", L"Färdväg"},
    {InEdit(text::add::cancel), L"Cancel", L"Avbryt"},
    {InEdit(text::add::mustChooseDay), L"You must choose a day.", L"Du måste välja en dag."},
    {InEdit(text::add::onlyNumbers), L"Only integers and decimal numbers.", L"Endast heltal eller decimaltal."},
    {InEdit(text::add::numberOf), L"Number of", L"Antal körda"},
    {InEdit(text::add::mustBePositive), L"must be positive.", L"måste vara positivt."},
    {InEdit(text::add::onlySpecifyNumberOf), L"You can only specify the number of", L"Du kan endast ange antal körda"},
    {InEdit(text::add::withSixCharacters), L"with six (6) characters.", L"med sex (6) tecken."},
    {InEdit(text::add::youHaveUsed), L"You have used", L"Du har använt"},
    {text::print::caption, L"Print inteval", L"Utskriftsintervall"},
    {text::print::asFrom, L"As from", L"Från och med"},
    {text::print::year, L"Year", L"År"},
    {text::print::month, L"Month", L"Månad"},
    {text::print::day, L"Day", L"Dag"},
    {text::print::upTo, L"Up to", L"Till och med"},
    {text::print::heading, L"Heading", L"Rubrik för utskrift"},
    {text::print::print, L"Print...", L"Skriv ut..."},
    {text::print::cancel, L"Cancel", L"Avbryt"},
    {text::print::canNotPrintRange, L"Can not print the selected range.",
     L"Kan inte skriva ut det angivna intervallet."},
    {text::print::fromDateIsPastToDate, L"From-date is past to-date.", L"Från-datum senare än till-datum."},
    {text::print::to, L" to ", L" till "},
    {text::print::referTo, L"Refer to:", L"Avser:"},
    {text::print::name, L"Name:", L"Namn:"},
    {text::print::socialSecurityNumber, L"Social security number:", L"Personnummer:"},
    {text::print::journalTitle, L"Driver's journal", L"Körjournal"},
    {text::print::date, L"Date", L"Datum"},
    {text::print::signature, L"Signature", L"Underskrift"},
    {text::print::sum, L"Sum:", L"Totalt:"},
    {text::print::page, L"Page", L"Sida"},
    {text::settings::caption, L"Settings", L"Inställningar"},
    {text::settings::unit, L"Unit", L"Enhet"},
    {text::settings::chooseUnit, L"Choose the unit you want the program to work with:",
     L"Välj den enhet du vill att programmet skall arbeta i:"},
    {text::settings::routesAreNotRecalculated,
     L"Note that the earlier entered routes won't be recalculated on unit change. Every route must be recalculated by "
     L"hand.",
     L"Observera att de tidigare angivna dagarnas sträckor ej räknas om vid enhetsbyte. Varje enskild dag måste räknas "
     L"om för hand."},
    {text::settings::cancelOnUnitTab, L"Cancel", L"Avbryt"},
    {text::settings::language, L"Language", L"Språk"},
    {text::settings::chooseLanguage, L"Choose the language in which the program will run:",
     L"Välj det språk du vill att programmet skall arbeta i:"},
    {text::settings::english, L"English (Engelska)", L"Engelska (English)"},
    {text::settings::swedish, L"Swedish (Svenska)", L"Svenska (Swedish)"},
    {text::settings::cancel, L"Cancel", L"Avbryt"},
    {text::userinfo::caption, L"Employee information", L"Personinformation"},
    {text::userinfo::company, L"Company", L"Företag"},
    {text::userinfo::firstName, L"First name", L"Förnamn"},
    {text::userinfo::surname, L"Surname", L"Efternamn"},
    {text::userinfo::useSocialSecurityNumber, L"Use social security number", L"Använd personnummer"},
    {text::userinfo::cancel, L"Cancel", L"Avbryt"},
};

class TextTable : public testing::Test {
protected:
    void TearDown() override { Module1::languageOffset = 0; }
};

} // namespace

TEST_F(TextTable, EveryTextReadsAsListedInBothLanguages)
{
    for (const Row& row : table) {
        EXPECT_EQ(LoadText(row.id), row.english);
        EXPECT_EQ(LoadText(static_cast<std::int16_t>(row.id + 100)), row.swedish);
    }
}

TEST_F(TextTable, ThereIsNoOtherText)
{
    std::set<int> known;
    for (const Row& row : table) {
        known.insert({row.id, row.id + 100});
    }
    ASSERT_EQ(known.size(), 2 * table.size()) << "a number is listed twice";
    for (int id = std::numeric_limits<std::int16_t>::min(); id <= std::numeric_limits<std::int16_t>::max(); ++id) {
        const auto error = ErrorOf([id] { LoadText(static_cast<std::int16_t>(id)); });
        ASSERT_EQ(error, known.contains(id) ? std::nullopt : std::optional(ErrorNumber::ResourceNotFound)) << id;
    }
}

TEST_F(TextTable, LocalText_UsesTheLanguageOffset)
{
    EXPECT_EQ(LocalText(text::main::file), L"File");
    Module1::languageOffset = 100;
    EXPECT_EQ(LocalText(text::main::file), L"Arkiv");
    EXPECT_EQ(LocalText(text::print::to), L" till ");
    Module1::languageOffset = 7;
    EXPECT_EQ(LocalText(text::main::file), L"Settings...");
}

TEST_F(TextTable, LocalText_FailsWithoutATextAndBeyond16Bits)
{
    Module1::languageOffset = 50;
    EXPECT_EQ(ErrorOf([] { LocalText(text::main::file); }), ErrorNumber::ResourceNotFound);
    Module1::languageOffset = std::numeric_limits<std::int16_t>::max();
    EXPECT_EQ(ErrorOf([] { LocalText(text::main::file); }), ErrorNumber::Overflow);
}

TEST_F(TextTable, AllTextsAreInOneResourceLanguage)
{
    std::set<WORD> languages;
    EnumResourceNamesW(
        nullptr, RT_STRING,
        [](HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR found) -> BOOL {
            return EnumResourceLanguagesW(
                module, type, name,
                [](HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR set) -> BOOL {
                    reinterpret_cast<std::set<WORD>*>(set)->insert(language);
                    return TRUE;
                },
                found);
        },
        reinterpret_cast<LONG_PTR>(&languages));
    EXPECT_THAT(languages, testing::ElementsAre(1053));
}
