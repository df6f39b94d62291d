#pragma once

/// How the product names itself, and where it and its maker are found. The owner of the product changes them here; no
/// form repeats them.
namespace product {

inline constexpr const char* homePage = "https://odomira.example.com/";
inline constexpr const char* makerHomePage = "https://brenholt.example.com/";

inline constexpr const wchar_t* longName = L"Odomira Mileage Journal";
/// Names the holder of the rights.
inline constexpr const wchar_t* notice = L"Copyright \u00A9 2026 Brenholt. All rights reserved.";

} // namespace product
