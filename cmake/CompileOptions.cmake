# odomira::options has the compiler options of all rooms.
add_library(odomira_options INTERFACE)
add_library(odomira::options ALIAS odomira_options)
target_compile_features(odomira_options INTERFACE cxx_std_20)

if(MSVC)
  target_compile_options(odomira_options INTERFACE /W4 /WX /permissive- /utf-8 /Zc:__cplusplus /guard:cf)
  # 0x800: imported DLLs are loaded from the system folder only.
  add_link_options(/guard:cf /DEPENDENTLOADFLAG:0x800)
else()
  target_compile_options(odomira_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  # Debug checks iterators and stops at undefined behaviour, errors that may have no visible effect in Release.
  add_compile_options($<$<CONFIG:Debug>:-Og>)
  add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_DEBUG> $<$<CONFIG:Debug>:_GLIBCXX_DEBUG_PEDANTIC>)
  target_compile_options(odomira_options INTERFACE
    $<$<CONFIG:Debug>:-fsanitize=undefined -fsanitize-undefined-trap-on-error>)
  # ASLR with high entropy, and DEP. (This compiler has no Control Flow Guard.)
  add_link_options(-Wl,--dynamicbase,--high-entropy-va,--nxcompat)
  # The compiler's run-time library is linked statically, so odomira.exe needs no DLL beside it.
  add_link_options(-static $<$<CONFIG:Release>:-s>)
  # Builds of one commit are identical: the program contains neither the time nor the folder of the build.
  add_compile_options($<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
  add_link_options($<$<CONFIG:Release>:-Wl,--no-insert-timestamp>)
endif()

# The macros of every source that includes Windows headers.
add_library(odomira_win32 INTERFACE)
add_library(odomira::win32 ALIAS odomira_win32)
target_compile_definitions(odomira_win32 INTERFACE
  UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 STRICT)
