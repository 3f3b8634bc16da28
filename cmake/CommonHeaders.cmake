# What nearly every file includes takes the compiler longer than the file itself. It is read once for
# all modules, once for the windows and once for all tests. Each file still names all that it needs,
# for the preset `debug` builds without.
set(common_header_names
    <algorithm> <array> <atomic> <cmath> <functional> <limits> <map> <memory> <optional> <set> <span>
    <string> <utility> <vector>
    <QtCore/QFile> <QtCore/QHash> <QtCore/QJsonArray> <QtCore/QJsonDocument> <QtCore/QJsonObject>
    <QtCore/QList> <QtCore/QMap> <QtCore/QMetaEnum> <QtCore/QMetaProperty> <QtCore/QObject>
    <QtCore/QPointer> <QtCore/QRectF> <QtCore/QSet> <QtCore/QString> <QtCore/QTimer> <QtCore/QUuid>
    <QtGui/QImage> <QtGui/QPainterPath> <QtGui/QTransform> <tl/expected.hpp>)

# For targets that are compiled with the same options: target_precompile_headers(target REUSE_FROM
# common_headers).
function(tessara_read_once NAME)
    cmake_parse_arguments(ARG "" "" "HEADERS;LIBS" ${ARGN})
    set(source ${CMAKE_BINARY_DIR}/${NAME}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${NAME} OBJECT ${source})
    set_target_properties(${NAME} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
    target_link_libraries(${NAME} PRIVATE ${ARG_LIBS})
    target_precompile_headers(${NAME} PRIVATE ${common_header_names} ${ARG_HEADERS})
endfunction()

# Used by Base, too, which isn't linked with Gui nor compiled with its definitions.
tessara_read_once(common_headers LIBS tessara_options Qt6::Core tl::expected)
target_include_directories(common_headers SYSTEM PRIVATE
    $<TARGET_PROPERTY:Qt6::Gui,INTERFACE_INCLUDE_DIRECTORIES>)
tessara_read_once(test_headers
    HEADERS <gtest/gtest.h> <gmock/gmock.h>
    LIBS tessara_options tessara_test_options Qt6::Gui tl::expected GTest::gmock)
if(TESSARA_APPLICATION)
    tessara_read_once(window_headers
        HEADERS <QtQml/QQmlEngine> <QtQuick/QQuickItem>
        LIBS tessara_options Qt6::Quick tl::expected)
endif()
