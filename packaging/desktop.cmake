# The desktop entry with its icons, the file types, the software catalogue's entry, and completion.
install(FILES ${CMAKE_CURRENT_LIST_DIR}/desktop/zem.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/desktop/zem.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
# Its name is the identifier that stands in it, as catalogues want it.
set(catalogueEntry org.example.zem.metainfo.xml)
configure_file(desktop/${catalogueEntry} ${CMAKE_BINARY_DIR}/share/metainfo/${catalogueEntry} @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/share/metainfo/${catalogueEntry}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
# Made of the program's own picture by script/icons.
foreach(size 32 64 128)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/icons/${size}.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME zem.png)
endforeach()

# What the tutorial and the page on resources speak of.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/examples ${CMAKE_SOURCE_DIR}/docs/resources
    DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN README.md EXCLUDE)

# bash looks for a file of the program's name, so each program that has completion gets a link.
set(completionDir ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/completions/zem.bash DESTINATION ${completionDir}
    RENAME zem)
get_property(completed GLOBAL PROPERTY ZEM_PROGRAMS)
list(REMOVE_ITEM completed zem)
foreach(program IN LISTS completed)
    install(CODE "
        set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${completionDir}\")
        file(CREATE_LINK zem \"\${folder}/${program}\" SYMBOLIC)")
endforeach()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/completions/_zem
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
