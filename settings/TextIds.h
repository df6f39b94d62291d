#pragma once

#include <cstdint>

/// The numbers of the texts in English. The language offset is added to them: 0 English, 100 Swedish. Each form has up
/// to 100 numbers from a base on (1000, 2000, ...); the first is its caption.
namespace text {

/// The name of the language: 0 "English", 100 "Svenska".
inline constexpr std::int16_t languageName = 0;

namespace main {
inline constexpr std::int16_t file = 1000;
inline constexpr std::int16_t edit = 1001;
inline constexpr std::int16_t help = 1002;
inline constexpr std::int16_t revert = 1003;
inline constexpr std::int16_t save = 1004;
inline constexpr std::int16_t print = 1005;
inline constexpr std::int16_t exit = 1006;
inline constexpr std::int16_t settings = 1007;
inline constexpr std::int16_t employeeInformation = 1008;
inline constexpr std::int16_t onTheWeb = 1009;
inline constexpr std::int16_t about = 1011;
inline constexpr std::int16_t date = 1012;
inline constexpr std::int16_t numberOf = 1013;
// The units are also stored in the registry, and frmMain::RelabelUnitOfTotal knows their lengths.
inline constexpr std::int16_t kilometres = 1014;
inline constexpr std::int16_t milesOrMil = 1015; ///< "miles" in English, "mil" in Swedish
inline constexpr std::int16_t route = 1016;
inline constexpr std::int16_t deleteDay = 1019;
inline constexpr std::int16_t editDay = 1020;
inline constexpr std::int16_t addDay = 1021;
inline constexpr std::int16_t chooseDayToDelete = 1022;
inline constexpr std::int16_t confirmDelete = 1023;
inline constexpr std::int16_t chooseDayToEdit = 1024;
inline constexpr std::int16_t total = 1026;
inline constexpr std::int16_t saveLastChanges = 1027;
inline constexpr std::int16_t confirmRevert = 1028;
inline constexpr std::int16_t otherPrograms = 1033;
inline constexpr std::int16_t couldNotLoadBrowser = 1034;
} // namespace main

namespace about {
inline constexpr std::int16_t caption = 2000;
inline constexpr std::int16_t developer = 2002;
} // namespace about

namespace add {
inline constexpr std::int16_t caption = 3000;
inline constexpr std::int16_t year = 3001;
inline constexpr std::int16_t month = 3002;
inline constexpr std::int16_t day = 3003;
inline constexpr std::int16_t distance = 3004;
inline constexpr std::int16_t route = 3005;
inline constexpr std::int16_t cancel = 3006;
inline constexpr std::int16_t mustChooseDay = 3007;
inline constexpr std::int16_t onlyNumbers = 3008;
inline constexpr std::int16_t numberOf = 3009;
inline constexpr std::int16_t mustBePositive = 3010;
inline constexpr std::int16_t onlySpecifyNumberOf = 3011;
inline constexpr std::int16_t withSixCharacters = 3012;
inline constexpr std::int16_t youHaveUsed = 3013;
} // namespace add

/// The items of text::add, counted from this caption.
namespace edit {
inline constexpr std::int16_t caption = 4000;
} // namespace edit

/// The dialog that prints, and the printed report.
namespace print {
inline constexpr std::int16_t caption = 5000;
inline constexpr std::int16_t asFrom = 5001;
inline constexpr std::int16_t year = 5002;
inline constexpr std::int16_t month = 5003;
inline constexpr std::int16_t day = 5004;
inline constexpr std::int16_t upTo = 5005;
inline constexpr std::int16_t heading = 5006;
inline constexpr std::int16_t print = 5007;
inline constexpr std::int16_t cancel = 5008;
inline constexpr std::int16_t canNotPrintRange = 5009;
inline constexpr std::int16_t fromDateIsPastToDate = 5010;
inline constexpr std::int16_t to = 5011; ///< with a space on either side
inline constexpr std::int16_t referTo = 5012;
inline constexpr std::int16_t name = 5013;
inline constexpr std::int16_t socialSecurityNumber = 5014;
inline constexpr std::int16_t journalTitle = 5015;
inline constexpr std::int16_t date = 5016;
inline constexpr std::int16_t signature = 5017;
inline constexpr std::int16_t sum = 5018;
inline constexpr std::int16_t page = 5019;
} // namespace print

namespace settings {
inline constexpr std::int16_t caption = 7000;
inline constexpr std::int16_t unit = 7001;
inline constexpr std::int16_t chooseUnit = 7002;
inline constexpr std::int16_t routesAreNotRecalculated = 7003;
inline constexpr std::int16_t cancelOnUnitTab = 7004;
inline constexpr std::int16_t language = 7005;
inline constexpr std::int16_t chooseLanguage = 7006;
inline constexpr std::int16_t english = 7007;
inline constexpr std::int16_t swedish = 7008;
inline constexpr std::int16_t cancel = 7009;
} // namespace settings

namespace userinfo {
inline constexpr std::int16_t caption = 8000;
inline constexpr std::int16_t company = 8001;
inline constexpr std::int16_t firstName = 8002;
inline constexpr std::int16_t surname = 8003;
inline constexpr std::int16_t useSocialSecurityNumber = 8004;
inline constexpr std::int16_t cancel = 8005;
} // namespace userinfo

} // namespace text
