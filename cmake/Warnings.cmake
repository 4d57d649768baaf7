# Compile options that every target of this project gets through `zemOptions`.
add_library(zemOptions INTERFACE)
target_compile_options(zemOptions INTERFACE
    -Wall -Wextra -Wpedantic
    # Messages name files from the top of the tree, never from a build machine's root.
    -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
target_include_directories(zemOptions INTERFACE ${CMAKE_SOURCE_DIR})
if(ZEM_WARNINGS_AS_ERRORS)
    target_compile_options(zemOptions INTERFACE -Werror)
endif()
