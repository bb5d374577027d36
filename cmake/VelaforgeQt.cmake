# SPDX-License-Identifier: MIT
# What the Qt side needs. Where it is not there, everything else is built.
#   VELAFORGE_WITH_QT       the whole side is built
#   VELAFORGE_WITH_QT_FILES the part of it that starts threads is, which needs no windows
set(VELAFORGE_WITH_QT OFF)
set(VELAFORGE_WITH_QT_FILES OFF)
if(VELAFORGE_BUILD_QT AND VELAFORGE_SANITIZE MATCHES "thread")
    # Qt itself is not instrumented: what hands its windows from thread to thread could not be followed.
    find_package(Qt6 6.4 QUIET COMPONENTS Core)
    find_package(Threads REQUIRED)
    set(VELAFORGE_WITH_QT_FILES ${Qt6_FOUND})
elseif(VELAFORGE_BUILD_QT)
    find_package(Qt6 6.4 QUIET COMPONENTS Widgets OpenGLWidgets)
    find_package(Threads REQUIRED)
    find_path(XCB_INCLUDE_DIR xcb/xcb.h)
    find_library(XCB_LIBRARY xcb)
    mark_as_advanced(XCB_INCLUDE_DIR XCB_LIBRARY)
    if(Qt6_FOUND AND XCB_INCLUDE_DIR AND XCB_LIBRARY)
        set(VELAFORGE_WITH_QT ON)
        set(VELAFORGE_WITH_QT_FILES ON)
        if(NOT TARGET xcb::xcb)
            add_library(xcb::xcb INTERFACE IMPORTED GLOBAL)
            target_include_directories(xcb::xcb SYSTEM INTERFACE "${XCB_INCLUDE_DIR}")
            target_link_libraries(xcb::xcb INTERFACE "${XCB_LIBRARY}")
        endif()
        find_program(VELAFORGE_LRELEASE lrelease HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}")
        mark_as_advanced(VELAFORGE_LRELEASE)
    elseif(VELAFORGE_REQUIRE_QT)
        message(FATAL_ERROR "Qt 6.4 with its widgets and OpenGL widgets, or libxcb, is not there")
    else()
        message(STATUS "Qt 6.4 with its widgets and OpenGL widgets, or libxcb, is not there: built without windows")
    endif()
endif()

# velaforge_translations(<target> <name> <language> <file>...)
# Puts the translations among the target's resources, as ":/translations/<name>_<language>.qm"; nothing where Qt's tools
# are not there.
function(velaforge_translations target name language)
    if(NOT VELAFORGE_LRELEASE)
        return()
    endif()
    set(compiled "${CMAKE_CURRENT_BINARY_DIR}/${name}_${language}.qm")
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    add_custom_command(OUTPUT "${compiled}" DEPENDS ${ARGN} VERBATIM
        COMMAND "${VELAFORGE_LRELEASE}" -silent ${ARGN} -qm "${compiled}")
    qt_add_resources(${target} "${name}_${language}" PREFIX "/translations" BASE "${CMAKE_CURRENT_BINARY_DIR}"
        FILES "${compiled}")
endfunction()
