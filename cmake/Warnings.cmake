# Compile options that every target of this project gets through `zemFlags`.
add_library(zemFlags INTERFACE)
target_compile_options(zemFlags INTERFACE
    -Wall -Wextra -Wpedantic
    # Messages name files from the top of the tree, never from a build machine's root.
    -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
if(ZEM_WARNINGS_AS_ERRORS)
    target_compile_options(zemFlags INTERFACE -Werror)
endif()
