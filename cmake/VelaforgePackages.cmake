# SPDX-License-Identifier: MIT
# What is installed where, and the Debian packages: libvelaforge0 to run programs, libvelaforge-qt0 to run those with
# windows, libvelaforge-dev to build them, vfviewer. All of it may be moved as a whole.
include(CMakePackageConfigHelpers)

set(VELAFORGE_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/velaforge")

# Headers that only the libraries' own sources include stay out.
set(VELAFORGE_WITHOUT_QT_HEADERS PATTERN "qt" EXCLUDE)
if(VELAFORGE_WITH_QT)
    set(VELAFORGE_WITHOUT_QT_HEADERS)
endif()
install(DIRECTORY velaforge DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
    FILES_MATCHING
    ${VELAFORGE_WITHOUT_QT_HEADERS}
    PATTERN "*.h"
    PATTERN "toolkit" EXCLUDE
    PATTERN "internal" EXCLUDE
    PATTERN "readers" EXCLUDE
    PATTERN "records" EXCLUDE
    PATTERN "writers" EXCLUDE
    PATTERN "FileDraft.h" EXCLUDE
    PATTERN "InternedText.h" EXCLUDE
    PATTERN "PosixFiles.h" EXCLUDE
    PATTERN "SettingsDocument.h" EXCLUDE
    PATTERN "SettingsFile.h" EXCLUDE
    PATTERN "SettingsText.h" EXCLUDE
    PATTERN "Utf8.h" EXCLUDE)

install(EXPORT velaforgeTargets NAMESPACE velaforge:: DESTINATION "${VELAFORGE_CMAKE_DIR}" COMPONENT development)
if(VELAFORGE_WITH_QT)
    # A set of its own: who uses no windows need not have Qt.
    install(EXPORT velaforgeQtTargets NAMESPACE velaforge:: DESTINATION "${VELAFORGE_CMAKE_DIR}"
        COMPONENT development)
endif()
configure_package_config_file(cmake/velaforgeConfig.cmake.in "${PROJECT_BINARY_DIR}/velaforgeConfig.cmake"
    INSTALL_DESTINATION "${VELAFORGE_CMAKE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/velaforgeConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/velaforgeConfig.cmake"
    "${PROJECT_BINARY_DIR}/velaforgeConfigVersion.cmake"
    cmake/VelaforgeOpenSceneGraph.cmake
    DESTINATION "${VELAFORGE_CMAKE_DIR}" COMPONENT development)

# velaforge_pkgconfig(<library> <description> <required package>...)
function(velaforge_pkgconfig library description)
    set(PC_NAME ${library})
    set(PC_DESCRIPTION "${description}")
    list(JOIN ARGN ", " PC_REQUIRES)
    file(RELATIVE_PATH PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
    configure_file(cmake/velaforge.pc.in "${PROJECT_BINARY_DIR}/${library}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${library}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
        COMPONENT development)
endfunction()
velaforge_pkgconfig(vfBase "Object model, containers and settings store of velaFORGE"
    openscenegraph-osg openscenegraph-osgDB)
velaforge_pkgconfig(vfApplication "Application framework of velaFORGE" vfBase)
velaforge_pkgconfig(vfIsolation "Locked-down processes for work on files that cannot be trusted" vfBase)
velaforge_pkgconfig(vfScene "3D models without a toolkit" vfApplication
    openscenegraph-osgUtil openscenegraph-osgAnimation openscenegraph-osgText)
velaforge_pkgconfig(vfFormats "Reading and writing of 3D models in locked-down processes" vfScene vfIsolation)
velaforge_pkgconfig(vfFormatReaders "Helper programs that read and write 3D models" vfFormats)
velaforge_pkgconfig(vfApplicationHeadless "Toolkit side of velaFORGE without a screen" vfScene)
if(VELAFORGE_WITH_QT)
    velaforge_pkgconfig(vfApplicationQt "Toolkit side of velaFORGE on Qt" vfApplication Qt6Widgets Qt6OpenGLWidgets)
endif()

# Debian keeps the licence of each package as its copyright file.
set(VELAFORGE_PACKAGES libvelaforge0:runtime libvelaforge-dev:development vfviewer:viewer)
if(VELAFORGE_WITH_QT)
    list(APPEND VELAFORGE_PACKAGES libvelaforge-qt0:runtime_qt)
endif()
foreach(package IN LISTS VELAFORGE_PACKAGES)
    string(REGEX MATCH "^([^:]+):(.+)$" _ ${package})
    install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CMAKE_MATCH_1}" RENAME copyright
        COMPONENT ${CMAKE_MATCH_2})
endforeach()
install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/libvelaforge-dev"
    COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velaforge)
set(CPACK_PACKAGE_VENDOR velaFORGE)
set(CPACK_PACKAGE_CONTACT "velaFORGE <velaforge@localhost>")
set(CPACK_PACKAGE_HOMEPAGE_URL "")
set(CPACK_COMPONENTS_ALL runtime development viewer)
if(VELAFORGE_WITH_QT)
    list(APPEND CPACK_COMPONENTS_ALL runtime_qt)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_RUNTIME_QT_DEPENDS runtime)
set(CPACK_COMPONENT_VIEWER_DEPENDS runtime)
if(VELAFORGE_WITH_QT)
    list(APPEND CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime_qt)
    list(APPEND CPACK_COMPONENT_VIEWER_DEPENDS runtime_qt)
endif()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvelaforge${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_QT_PACKAGE_NAME libvelaforge-qt${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_QT_PACKAGE_DEPENDS libqt6svg6)
set(CPACK_DEBIAN_RUNTIME_QT_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvelaforge-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS libopenscenegraph-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "qt6-base-dev, libqt6opengl6-dev")
set(CPACK_DEBIAN_VIEWER_PACKAGE_NAME vfviewer)
set(CPACK_DEBIAN_VIEWER_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_VIEWER_PACKAGE_RECOMMENDS libgl1-mesa-dri)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Application framework for programs that show 3D models
 The libraries that programs on the framework need to run.")
set(CPACK_COMPONENT_RUNTIME_QT_DESCRIPTION "Application framework for programs that show 3D models, windows
 The library that programs on the framework with windows need to run.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Application framework for programs that show 3D models, development files
 Headers, CMake package and pkg-config files to build programs on the framework.")
set(CPACK_COMPONENT_VIEWER_DESCRIPTION "Viewer of 3D models
 Shows models of many formats, changes them, and renders them into pictures, also without a display.")
include(CPack)
