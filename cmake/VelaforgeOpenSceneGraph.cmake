# SPDX-License-Identifier: MIT
# OpenSceneGraph as imported targets (osg::osg, osg::osgDB, ...): CMake's own find module knows variables only.

find_package(OpenSceneGraph 3.6 QUIET REQUIRED COMPONENTS osgDB osgUtil osgGA osgText osgViewer osgAnimation)

function(_velaforge_osg_target name library)
    if(NOT TARGET osg::${name})
        add_library(osg::${name} INTERFACE IMPORTED GLOBAL)
        target_include_directories(osg::${name} SYSTEM INTERFACE "${OPENSCENEGRAPH_INCLUDE_DIRS}")
        target_link_libraries(osg::${name} INTERFACE "${library}" ${ARGN})
    endif()
endfunction()

_velaforge_osg_target(OpenThreads "${OPENTHREADS_LIBRARY}")
_velaforge_osg_target(osg "${OSG_LIBRARY}" osg::OpenThreads)
_velaforge_osg_target(osgDB "${OSGDB_LIBRARY}" osg::osg)
_velaforge_osg_target(osgUtil "${OSGUTIL_LIBRARY}" osg::osg)
_velaforge_osg_target(osgText "${OSGTEXT_LIBRARY}" osg::osgDB)
_velaforge_osg_target(osgGA "${OSGGA_LIBRARY}" osg::osgUtil osg::osgDB)
_velaforge_osg_target(osgViewer "${OSGVIEWER_LIBRARY}" osg::osgGA osg::osgText)
_velaforge_osg_target(osgAnimation "${OSGANIMATION_LIBRARY}" osg::osgUtil osg::osgDB)
