# Turns what was installed for a package into what Debian expects of one: settings below /etc, where
# they are kept over upgrades, compressed manuals and change logs, and the licence as "copyright".
set(root "${CPACK_TEMPORARY_DIRECTORY}")
if(NOT CPACK_GENERATOR STREQUAL "DEB" OR NOT IS_DIRECTORY "${root}/usr")
    return()
endif()
find_program(gzip gzip REQUIRED)
set(debian "@CMAKE_CURRENT_BINARY_DIR@/debian")
set(share "${root}/usr/@CMAKE_INSTALL_DATADIR@")
set(doc "${share}/doc/zem")

file(MAKE_DIRECTORY "${root}/etc/X11/app-defaults" "${share}/lintian/overrides")
file(RENAME "${share}/X11/app-defaults/zem" "${root}/etc/X11/app-defaults/zem")
file(REMOVE_RECURSE "${share}/X11")
configure_file("${debian}/lintian-overrides" "${share}/lintian/overrides/zem" COPYONLY)

file(REMOVE "${doc}/LICENSE")
configure_file("${debian}/copyright" "${doc}/copyright" COPYONLY)
configure_file("${debian}/changelog" "${doc}/changelog.Debian" COPYONLY)
file(RENAME "${doc}/CHANGELOG.md" "${doc}/changelog")

file(GLOB_RECURSE pages "${share}/man/*.[1-9]")
list(APPEND pages "${doc}/changelog" "${doc}/changelog.Debian")
foreach(page IN LISTS pages)
    execute_process(COMMAND "${gzip}" -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
