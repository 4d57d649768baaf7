# The rooms of the program: one row each, lower ones first.
#
# zem_room(LIBRARY FOLDER [the rooms whose headers it may include])
#
# A room is a folder, a static library and a row here. A row names only rooms of rows before it, so
# that every include looks down. A room sees the headers of the rooms in its row and no others,
# and links them. docs/ARCHITECTURE.md draws this table; the test Layers compares the two.
macro(zem_rooms)
    # No X
    zem_room(qipSupport    qip/Support)
    zem_room(zemShare      zem/Share)
    zem_room(zemIcons      zem/Icons)
    zem_room(zemDemangle   zem/Demangle)
    zem_room(zemData       zem/Data          qipSupport)
    zem_room(zemRows       zem/Rows          qipSupport zemDemangle zemData)
    zem_room(zemRepository zem/Repository    qipSupport zemData zemRows)
    zem_room(zemLines      zem/Lines         qipSupport zemData zemRows)
    zem_room(zemOptions    zem/Options       qipSupport zemRows)
    zem_room(zemTools      tools/common      qipSupport zemData zemDemangle zemLines)
    zem_room(zemImport     tools/import      qipSupport zemTools)
    zem_room(zemImportLines tools/import/lines zemTools zemImport)
    zem_room(zemImportLcov tools/import/lcov qipSupport zemTools zemImport zemImportLines)
    zem_room(zemImportCobertura tools/import/cobertura
                                             qipSupport zemTools zemImport zemImportLines)
    zem_room(zemImportGcov tools/import/gcov qipSupport zemTools zemImport zemImportLines)
    zem_room(zemImportGcc  tools/import/gcc  qipSupport zemTools zemImport zemImportGcov)
    zem_room(zemImportLlvm tools/import/llvm qipSupport zemTools zemImport)
    zem_room(zemCompare    tools/compare     qipSupport zemData zemDemangle zemRows zemRepository
                                             zemLines zemTools zemImport zemImportGcc)
    zem_room(zemRun        tools/run         qipSupport zemTools zemImport zemImportLlvm)
    zem_room(zemFormats    tools/formats     qipSupport zemData zemDemangle zemRows zemTools)
    zem_room(zemReporting  tools/report      qipSupport zemData zemRows zemRepository zemOptions
                                             zemFormats)
    zem_room(zem-dump      tools/dump        qipSupport zemData)

    zem_x_above()
    zem_room(qipBase       qip/Base          qipSupport)
    zem_room(qipDrawing    qip/Drawing       qipSupport qipBase)
    zem_room(qipMonitors   qip/Monitors      qipSupport qipBase qipDrawing)
    zem_room(qipComponents qip/Components    qipSupport qipBase qipDrawing qipMonitors)
    zem_room(qipCommon     qip/Common        qipSupport qipBase qipMonitors)
    zem_room(zemButtons    zem/Buttons       qipSupport qipBase qipDrawing qipMonitors)
    zem_room(zemText       zem/Text)
    zem_room(zemHelp       zem/Help          qipSupport qipBase qipDrawing qipMonitors qipComponents
                                             zemShare zemIcons zemLines zemButtons zemText)
    zem_room(zemStatus     zem/Status        qipSupport qipBase qipMonitors qipComponents qipCommon
                                             zemRows zemLines zemButtons zemHelp)
    zem_room(zemSource     zem/Source        qipSupport qipBase qipDrawing qipMonitors qipComponents
                                             qipCommon zemData zemRows zemLines zemButtons zemText
                                             zemHelp zemStatus)
    zem_room(zemReports    zem/Reports       qipSupport qipBase qipDrawing qipMonitors qipComponents
                                             qipCommon zemData zemRows zemRepository zemLines
                                             zemButtons zemHelp zemStatus zemSource)
    zem_room(zemWindow     zem/Window        qipSupport qipBase qipDrawing qipMonitors qipComponents
                                             qipCommon zemIcons zemData zemRows zemRepository zemLines
                                             zemButtons zemHelp zemStatus zemSource zemReports)
    zem_room(zemApp        zem/App           qipSupport qipBase qipMonitors qipComponents qipCommon
                                             zemShare zemData zemRows zemRepository zemLines
                                             zemOptions zemButtons zemStatus zemSource zemReports
                                             zemWindow)
endmacro()

if(ZEM_WITH_X)
    find_package(X11 REQUIRED COMPONENTS Xt Xext Xpm)
    find_package(Motif REQUIRED)
    add_library(zemX11 INTERFACE)
    target_include_directories(zemX11 SYSTEM INTERFACE ${MOTIF_INCLUDE_DIR} ${X11_INCLUDE_DIR})
    # libXm must stand before libXt: the other way round the dynamic linker takes the plain vendor
    # shell of Xt and the first popup dies with BadWindow. --no-as-needed keeps it even where
    # nothing but that shell is taken from it.
    target_link_libraries(zemX11 INTERFACE
        -Wl,--push-state,--no-as-needed ${MOTIF_LIBRARIES} -Wl,--pop-state
        ${X11_Xt_LIB} ${X11_Xpm_LIB} ${X11_Xext_LIB} ${X11_X11_LIB})
endif()

# One row: keeps it, and turns away a room that is named twice or that looks up.
function(zem_room name folder)
    foreach(below IN LISTS ARGN)
        if(NOT below IN_LIST ZEM_ROOM_NAMES)
            message(FATAL_ERROR "${name} must not include ${below}: no row before it has that name")
        endif()
    endforeach()
    if(name IN_LIST ZEM_ROOM_NAMES OR folder IN_LIST ZEM_ROOM_FOLDERS)
        message(FATAL_ERROR "two rows for ${name} or ${folder}")
    endif()
    set(ZEM_ROOM_NAMES ${ZEM_ROOM_NAMES} ${name} PARENT_SCOPE)
    set(ZEM_ROOM_FOLDERS ${ZEM_ROOM_FOLDERS} ${folder} PARENT_SCOPE)
    set(ZEM_ROOM_${name} ${ARGN} PARENT_SCOPE)
    set(ZEM_ROOM_${name}_FOLDER ${folder} PARENT_SCOPE)
    set(ZEM_ROOM_${name}_NEEDS_X ${ZEM_X_ABOVE} PARENT_SCOPE)
endfunction()

macro(zem_x_above)
    set(ZEM_X_ABOVE ON)
endmacro()
set(ZEM_X_ABOVE OFF)
zem_rooms()

# The table and what each target really sees, for the test that compares them.
function(zem_write_rooms)
    set(table "")
    foreach(room IN LISTS ZEM_ROOM_NAMES)
        if(ZEM_ROOM_${room}_NEEDS_X)
            string(APPEND table "X ")
        else()
            string(APPEND table "- ")
        endif()
        list(JOIN ZEM_ROOM_${room} " " below)
        string(APPEND table "${room} ${ZEM_ROOM_${room}_FOLDER} ${below}\n")
    endforeach()
    file(WRITE ${CMAKE_BINARY_DIR}/rooms/table "${table}")
endfunction()

function(zem_write_include_path target)
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/rooms/${target}.path
        CONTENT "-I$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,\n-I>\n")
endfunction()

# Adds the folder of each room; those that need X only when it is wanted.
macro(zem_add_rooms)
    zem_write_rooms()
    foreach(room IN LISTS ZEM_ROOM_NAMES)
        if(ZEM_WITH_X OR NOT ZEM_ROOM_${room}_NEEDS_X)
            add_subdirectory(${ZEM_ROOM_${room}_FOLDER})
        endif()
    endforeach()
endmacro()

# Where the headers of a room can be included from: a folder of the build tree with a file for each
# header, which includes the real one. A compiler that is given this folder and not the source tree
# finds the headers of this room and of no other.
function(zem_headers_of room result)
    set(${result} ${CMAKE_BINARY_DIR}/include/${room} PARENT_SCOPE)
endfunction()

# Gives `target`, a room or a part of a program, the headers of `rooms`.
function(zem_see target)
    foreach(room IN LISTS ARGN)
        zem_headers_of(${room} root)
        target_include_directories(${target} PRIVATE ${root})
    endforeach()
endfunction()

# Makes the files through which the headers of this folder are included.
function(zem_publish_headers room result)
    zem_headers_of(${room} root)
    file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    set(published "")
    foreach(header IN LISTS ARGN)
        file(CONFIGURE OUTPUT ${root}/${folder}/${header} @ONLY
            CONTENT "#include \"${CMAKE_CURRENT_SOURCE_DIR}/${header}\"\n")
        list(APPEND published ${root}/${folder}/${header})
    endforeach()
    set(${result} ${published} PARENT_SCOPE)
endfunction()

# zem_library(NAME [SOURCES ...] HEADERS ...)
# The library of the room in this folder. Who links it also links the rooms of its row.
function(zem_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;HEADERS" ${ARGN})
    if(NOT CMAKE_CURRENT_SOURCE_DIR STREQUAL "${CMAKE_SOURCE_DIR}/${ZEM_ROOM_${name}_FOLDER}")
        message(FATAL_ERROR "${name} is not the room of this folder in cmake/Layers.cmake")
    endif()
    zem_headers_of(${name} root)
    zem_publish_headers(${name} published ${arg_HEADERS})
    if(NOT arg_SOURCES)
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${root})
        target_link_libraries(${name} INTERFACE ${ZEM_ROOM_${name}})
        return()
    endif()
    add_library(${name} STATIC ${arg_SOURCES})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${root} FILES ${published})
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    zem_see(${name} ${ZEM_ROOM_${name}})
    zem_write_include_path(${name})
    target_link_libraries(${name} PUBLIC zemFlags INTERFACE ${ZEM_ROOM_${name}})
    if(ZEM_ROOM_${name}_NEEDS_X)
        target_link_libraries(${name} PUBLIC zemX11)
    endif()
endfunction()

# zem_program(NAME [NOT_INSTALLED] SOURCES ... LINK rooms)
# A program. It sees and links the rooms of its row, or, when it has none, those of LINK.
function(zem_program name)
    cmake_parse_arguments(arg "NOT_INSTALLED" "" "SOURCES;LINK" ${ARGN})
    set(rooms ${ZEM_ROOM_${name}} ${arg_LINK})
    add_executable(${name} ${arg_SOURCES})
    zem_see(${name} ${rooms})
    zem_write_include_path(${name})
    list(TRANSFORM rooms REPLACE "(.+)" "$<LINK_ONLY:\\1>" OUTPUT_VARIABLE linked)
    target_link_libraries(${name} PRIVATE zemFlags ${linked})
    target_compile_definitions(${name} PRIVATE ZEM_VERSION="${PROJECT_VERSION}")
    if(NOT arg_NOT_INSTALLED)
        install(TARGETS ${name})
        set_property(GLOBAL APPEND PROPERTY ZEM_PROGRAMS ${name}) # completion has them all
    endif()
endfunction()
