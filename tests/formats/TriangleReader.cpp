// SPDX-License-Identifier: MIT
// A helper executable with a format of its own, as another program would have one. Its reader can also be made to lie.
#include "TriangleFormat.h"

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/ReaderTasks.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/isolation/Helper.h>

#include <osg/Geometry>
#include <osg/Image>
#include <osg/Texture2D>

#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

namespace {

vfFormats::ReadOutcome readTriangle(const std::string& path)
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    std::ifstream file(path);
    for (osg::Vec3 point; file >> point.x() >> point.y() >> point.z();)
        points->push_back(point);
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(points);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<int>(points->size())));
    vfFormats::ReadOutcome outcome;
    outcome.scene = geometry;
    file.clear();
    unsigned int unit = 0;
    // A process that its file has taken over can name any file.
    for (std::string name; file >> name;) {
        const osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(1, 1, 1, GL_RGB, GL_UNSIGNED_BYTE);
        image->setFileName(name);
        geometry->getOrCreateStateSet()->setTextureAttributeAndModes(unit++, new osg::Texture2D(image));
        vfFormats::FileGate::noteFile(name);
    }
    return outcome;
}

std::string writeTriangle(osg::Node& scene, const vfFormats::WriteTarget& target)
{
    std::ostringstream file;
    const auto* points = scene.asGeometry()
                             ? dynamic_cast<const osg::Vec3Array*>(scene.asGeometry()->getVertexArray())
                             : nullptr;
    for (std::size_t i = 0; points && i < points->size(); ++i)
        file << (*points)[i].x() << ' ' << (*points)[i].y() << ' ' << (*points)[i].z() << '\n';
    if (!points)
        return "it is not a triangle";
    const std::string text = file.str();
    return ::write(target.model, text.data(), text.size()) == static_cast<ssize_t>(text.size())
               ? ""
               : "the disk is full";
}

} // namespace

int main(int argc, char** argv)
{
    vfIsolation::Helper helper;
    vfFormats::addFormat(vfTest::triangleFormat());
    vfFormats::addFormatCode("tri", {readTriangle, writeTriangle});
    vfFormats::addReaderTasks(helper);
    return helper.run(argc, argv);
}
