#pragma once

/// The name of the product, its copyright notice and its web addresses.
namespace product {

inline constexpr const char* homePage = "https://odomira.example.com/";
inline constexpr const char* makerHomePage = "https://brenholt.example.com/";

inline constexpr const wchar_t* longName = L"Odomira Mileage Journal";
inline constexpr const wchar_t* notice = L"Copyright \u00A9 2026 Brenholt. All rights reserved.";

} // namespace product
