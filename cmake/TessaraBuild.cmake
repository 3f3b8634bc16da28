# How modules, programs and tests of Tessara are built.

# In order: a module may use those to its left and none to its right.
set(TESSARA_MODULES Base Models Rendering DeckLink Core Automation UI)

add_library(tessara_options INTERFACE)
target_compile_options(tessara_options INTERFACE
    -Wall -Wextra -Werror -Woverloaded-virtual -Werror=switch -fno-math-errno)
if(TESSARA_SANITIZE)
    target_compile_options(tessara_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    set(CMAKE_CXX_FLAGS_DEBUG -g1) # reports name lines, nobody steps through this build
    # The driver's interface is called through our declarations of another library's classes.
    target_compile_options(tessara_options INTERFACE -fno-sanitize=vptr)
    target_link_options(tessara_options INTERFACE -fsanitize=address,undefined)
endif()

# tessara_module(Rendering SOURCES a.cpp b.cpp USES Models QT Gui LIBS other)
function(tessara_module NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;QT;LIBS" ${ARGN})
    list(FIND TESSARA_MODULES ${NAME} own)
    foreach(used IN LISTS ARG_USES)
        list(FIND TESSARA_MODULES ${used} other)
        if(other LESS 0 OR NOT other LESS own)
            message(FATAL_ERROR "${NAME} must not use ${used}: the arrows run one way")
        endif()
    endforeach()
    qt_add_library(Tessara${NAME} STATIC ${ARG_SOURCES})
    target_include_directories(Tessara${NAME} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(Tessara${NAME} PUBLIC tessara_options tl::expected)
    if(NOT NAME STREQUAL UI) # the code that Qt makes of QML shadows freely
        target_compile_options(Tessara${NAME} PRIVATE -Wshadow=local)
        target_precompile_headers(Tessara${NAME} REUSE_FROM common_headers)
    endif()
    foreach(used IN LISTS ARG_USES)
        target_link_libraries(Tessara${NAME} PUBLIC Tessara${used})
    endforeach()
    foreach(component IN LISTS ARG_QT)
        target_link_libraries(Tessara${NAME} PUBLIC Qt6::${component})
    endforeach()
    target_link_libraries(Tessara${NAME} PUBLIC ${ARG_LIBS})
endfunction()

# tessara_program(tessara-headless SOURCES main.cpp USES Automation)
function(tessara_program NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBS" ${ARGN})
    qt_add_executable(${NAME} ${ARG_SOURCES})
    target_precompile_headers(${NAME} REUSE_FROM common_headers)
    target_link_libraries(${NAME} PRIVATE tessara_options ${ARG_LIBS})
    foreach(used IN LISTS ARG_USES)
        target_link_libraries(${NAME} PRIVATE Tessara${used})
    endforeach()
endfunction()

# Most tests take the compiler longer than they take to run. Two of UBSan's checks are a third of that:
# a null pointer ends a test under AddressSanitizer as well, misaligned reads are looked for in the
# modules only. Comes after tessara_options, which it takes back in part.
add_library(tessara_test_options INTERFACE)
target_compile_options(tessara_test_options INTERFACE
    $<$<CONFIG:Release>:-O1> $<$<BOOL:${TESSARA_SANITIZE}>:-fno-sanitize=null,alignment>)

# tessara_test(Models SOURCES aTest.cpp): one test program a module.
function(tessara_test NAME)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBS" ${ARGN})
    set(target Tessara${NAME}Test)
    qt_add_executable(${target} ${ARG_SOURCES} ${CMAKE_SOURCE_DIR}/tests/TestMain.cpp)
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${target} PRIVATE
        tessara_options tessara_test_options Tessara${NAME} GTest::gtest GTest::gmock Qt6::Gui
        Qt6::Test ${ARG_LIBS})
    foreach(used IN LISTS ARG_USES)
        target_link_libraries(${target} PRIVATE Tessara${used})
    endforeach()
    target_precompile_headers(${target} REUSE_FROM test_headers)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    add_test(NAME ${NAME} COMMAND ${target})
    set_tests_properties(${NAME} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=*.debug=false")
endfunction()
