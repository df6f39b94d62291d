#pragma once

#include <string>

/// True if the text is a number: spaces around it, one sign before it, digits with at most one decimal separator of the
/// region. Grouping separators, exponents and other decimal separators are not accepted, because the stored number
/// could differ from the intended one. A text of six characters whose number needs more (".12345" is stored as 0.12345)
/// is not accepted, because it would move the route on its line.
bool IsDistance(const std::wstring& text);

/// The number of a text that IsDistance accepts. "-0" is 0.
double DistanceOf(const std::wstring& text);
