# Every room of the house is compiled by the same rules: odomira::options carries them.
add_library(odomira_options INTERFACE)
add_library(odomira::options ALIAS odomira_options)
target_compile_features(odomira_options INTERFACE cxx_std_20)

if(MSVC)
  target_compile_options(odomira_options INTERFACE /W4 /WX /permissive- /utf-8 /Zc:__cplusplus /guard:cf)
  # 0x800: the libraries that are loaded with the program come from the system folder.
  add_link_options(/guard:cf /DEPENDENTLOADFLAG:0x800)
else()
  target_compile_options(odomira_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  # Debug finds what Release would survive by luck: iterators are checked and undefined behaviour stops the program.
  add_compile_options($<$<CONFIG:Debug>:-Og>)
  add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_DEBUG> $<$<CONFIG:Debug>:_GLIBCXX_DEBUG_PEDANTIC>)
  target_compile_options(odomira_options INTERFACE
    $<$<CONFIG:Debug>:-fsanitize=undefined -fsanitize-undefined-trap-on-error>)
  # Where the program lies in memory cannot be foretold, and no data is run. (This compiler has no control flow guard.)
  add_link_options(-Wl,--dynamicbase,--high-entropy-va,--nxcompat)
  # One file to hand out: nothing of the compiler's run-time lies beside odomira.exe.
  add_link_options(-static $<$<CONFIG:Release>:-s>)
  # The same commit gives the same bytes, built whenever and wherever: no time and no folder of the builder gets in.
  add_compile_options($<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
  add_link_options($<$<CONFIG:Release>:-Wl,--no-insert-timestamp>)
endif()
