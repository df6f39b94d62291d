#pragma once

/// The address of a function of a library in the system folder, or null if the library or the function does not exist.
/// No other folder is searched, because every user may add files to the folder of the program. The library stays
/// loaded.
void* SystemFunctionAddress(const wchar_t* library, const char* function) noexcept;

/// The same with its type. For a function that the program can do without, such as one that Wine lacks: the program
/// does not start if a function that is linked at build time is missing.
template <class Function>
Function* SystemFunction(const wchar_t* library, const char* function) noexcept
{
    return reinterpret_cast<Function*>(SystemFunctionAddress(library, function));
}
