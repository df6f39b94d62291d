#pragma once

#include <string>

/// Whether a typed distance counts as a number: blanks around it, one sign in front, digits with at most one decimal
/// separator of the system. Grouping characters, exponents and the other decimal separator do not count: they would be
/// stored as another number than was meant. Neither does a text that fits six places and whose number would not
/// (".12345" is stored as 0.12345): it would shift the journal's line.
bool IsDistance(const std::wstring& text);

/// The number of a text that IsDistance accepts. "-0" is 0.
double DistanceOf(const std::wstring& text);
