#include "app/Module1.h"

namespace Module1 {

std::wstring distanceUnit;
std::int16_t languageOffset = 0;

} // namespace Module1
