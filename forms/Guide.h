#pragma once

#include <string>

class Form;

/// Opens the guide in the language of the program at this anchor. Shows a message if the file does not exist or cannot
/// be opened.
void ShowGuide(const Form& form, const std::wstring& anchor);
