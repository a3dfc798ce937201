# The compiler settings of all our own code, and the function that declares a room.

add_library(plumara_settings INTERFACE)
target_include_directories(plumara_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(plumara_settings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(MSVC)
    # Some rooms and tests have definitions that the precompiled headers do without (C4605).
    target_compile_options(plumara_settings INTERFACE /W4 /we4062 /wd4605 /utf-8 /permissive-)
    if(PLUMARA_WERROR)
        target_compile_options(plumara_settings INTERFACE /WX)
    endif()
else()
    set(conversion -Wconversion)
    if(Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
        # From then on the QTRY_ macros narrow a duration in the code that uses them.
        set(conversion
            $<$<NOT:$<IN_LIST:Qt6::Test,$<TARGET_PROPERTY:LINK_LIBRARIES>>>:-Wconversion>)
    endif()
    target_compile_options(plumara_settings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow ${conversion})
    # A switch over an enumeration handles every value, also where warnings are no errors.
    target_compile_options(plumara_settings INTERFACE -Werror=switch)
    if(PLUMARA_WERROR)
        target_compile_options(plumara_settings INTERFACE -Werror)
    endif()
endif()
if(PLUMARA_SANITIZE)
    set(_sanitize -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_compile_options(plumara_settings INTERFACE ${_sanitize})
    target_link_options(plumara_settings INTERFACE ${_sanitize})
else()
    # The sanitizers see more, and only where nothing else looks first.
    include(cmake/Hardening.cmake)
    plumara_harden(plumara_settings)
endif()

if(PLUMARA_FUZZ)
    # Our own code tells libFuzzer where an input leads.
    target_compile_options(plumara_settings INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(plumara_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What several rooms include, compiled once. A file includes what it uses all the same; the lint
# compiles without this. REUSE_FROM needs a target that compiles something, hence the empty source.
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp
    CONTENT "// Nothing but the precompiled headers.\n")
add_library(plumara_precompiled OBJECT ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp)
set_target_properties(plumara_precompiled PROPERTIES AUTOMOC OFF AUTOUIC OFF)
target_link_libraries(plumara_precompiled PRIVATE plumara_settings Qt6::Widgets)
target_precompile_headers(plumara_precompiled PRIVATE
    <QApplication> <QGraphicsScene> <QGraphicsView> <QJsonObject> <QMainWindow> <QMessageBox>
    <QPainter> <algorithm> <memory>)

# plumara_room(<name> SOURCES <files> LINK <libraries>)
# Declares the static library plumara_<name> made of <files>.
function(plumara_room name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_library(plumara_${name} STATIC ${arg_SOURCES})
    target_link_libraries(plumara_${name} PUBLIC plumara_settings ${arg_LINK})
    target_precompile_headers(plumara_${name} REUSE_FROM plumara_precompiled)
endfunction()
