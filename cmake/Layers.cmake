# The rooms of the program and the edges between them. A library may link only what is listed for
# it here, so that the linker keeps the layers: an edge that is not in this table stops the
# configuration.
set(ZEM_LAYER_qipSupport    "")
set(ZEM_LAYER_qipBase       qipSupport zemX11)
set(ZEM_LAYER_qipDrawing    qipBase qipSupport zemX11)
set(ZEM_LAYER_qipMonitors   qipBase qipDrawing qipSupport zemX11)
set(ZEM_LAYER_qipComponents qipMonitors qipDrawing qipBase qipSupport zemX11)
set(ZEM_LAYER_qipCommon     qipMonitors qipBase qipSupport zemX11)
set(ZEM_LAYER_zemCore       qipSupport)
set(ZEM_LAYER_zemUI         zemCore qipComponents qipCommon qipMonitors qipDrawing qipBase qipSupport zemX11)
set(ZEM_LAYER_zemTools      zemCore qipSupport)
set(ZEM_LAYER_zemImport     zemTools zemCore qipSupport)
set(ZEM_LAYER_zemCompare   zemImport zemTools zemCore qipSupport)

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

# zem_library(NAME SOURCES ... HEADERS ... LINK ...)
# A static library of one room. LINK names the rooms below it. May be called again for the same
# NAME from another folder: the sources and edges are added.
function(zem_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;HEADERS;LINK" ${ARGN})
    if(NOT DEFINED ZEM_LAYER_${name})
        message(FATAL_ERROR "${name} is not a room in cmake/Layers.cmake")
    endif()
    foreach(edge IN LISTS arg_LINK)
        if(NOT edge IN_LIST ZEM_LAYER_${name})
            message(FATAL_ERROR "${name} must not link ${edge}: see cmake/Layers.cmake")
        endif()
    endforeach()
    if(NOT TARGET ${name})
        add_library(${name} STATIC)
        target_link_libraries(${name} PUBLIC zemOptions)
        set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    endif()
    list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    list(TRANSFORM arg_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(${name} PRIVATE ${arg_SOURCES}
        PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR} FILES ${arg_HEADERS})
    target_link_libraries(${name} PUBLIC ${arg_LINK})
endfunction()
