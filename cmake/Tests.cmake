# zem_test() is the only way in for a test: a *_test.cpp that no call lists stops the configuration.
if(BUILD_TESTING)
    find_package(GTest REQUIRED)
    include(GoogleTest)
endif()

# zem_test(NAME program LABEL core|gui|program SOURCES a_test.cpp ... LINK libraries ...
#          [DEPENDS targets that the test runs] [TIMEOUT seconds a case])
# Each case runs in a process of its own: Motif keeps state that a second toolkit start in the same
# process does not survive.
function(zem_test)
    cmake_parse_arguments(arg "" "NAME;LABEL;TIMEOUT" "SOURCES;LINK;DEPENDS" ${ARGN})
    list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE paths)
    set_property(GLOBAL APPEND PROPERTY ZEM_LISTED_TESTS ${paths})
    if(NOT BUILD_TESTING)
        return()
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${arg_NAME} ${arg_SOURCES})
    target_link_libraries(${arg_NAME} PRIVATE ${arg_LINK} zemTestSupport GTest::gtest_main)
    target_compile_definitions(${arg_NAME} PRIVATE
        ZEM_SOURCE_DIR="${CMAKE_SOURCE_DIR}" ZEM_BINARY_DIR="${CMAKE_BINARY_DIR}")
    if(arg_DEPENDS)
        add_dependencies(${arg_NAME} ${arg_DEPENDS})
    endif()
    gtest_discover_tests(${arg_NAME} DISCOVERY_TIMEOUT 60
        TEST_PREFIX "${arg_LABEL}." PROPERTIES LABELS ${arg_LABEL} TIMEOUT ${arg_TIMEOUT})
endfunction()

function(zem_check_tests_are_listed)
    if(NOT BUILD_TESTING)
        return()
    endif()
    get_property(listed GLOBAL PROPERTY ZEM_LISTED_TESTS)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/*_test.cpp)
    foreach(path IN LISTS found)
        if(NOT path IN_LIST listed AND (ZEM_WITH_X OR NOT path MATCHES "/tests/(widget|program)/"))
            message(FATAL_ERROR "${path} is a test that no zem_test() lists")
        endif()
    endforeach()
endfunction()
