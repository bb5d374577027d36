// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/StlWriter.h>

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/writers/ModelParts.h>
#include <velaforge/formats/writers/TriangleWalk.h>

#include <cmath>
#include <vector>

namespace vfFormats {

namespace {

class Writer
{
public:
    explicit Writer(CheckedFile& file) : m_file(file) {}

    void write(const ModelPart& part)
    {
        const std::string name = lineOf(part.name);
        bool isEmpty = true;
        walkTriangles(part, [&](const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c) {
            if (isEmpty)
                m_file.write("solid " + name + "\n");
            isEmpty = false;
            writeFacet(a, b, c);
        });
        if (!isEmpty)
            m_file.write("endsolid " + name + "\n");
    }

private:
    void writeFacet(const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c)
    {
        osg::Vec3d normal = (b - a) ^ (c - a);
        normal.normalize();
        m_file.write("facet normal", 12);
        writeVector(normal);
        m_file.write("outer loop\n", 11);
        for (const osg::Vec3d& corner : {a, b, c}) {
            m_file.write("vertex", 6);
            writeVector(corner);
        }
        m_file.write("endloop\nendfacet\n", 17);
    }

    void writeVector(const osg::Vec3d& vector)
    {
        for (int i = 0; i < 3; ++i) {
            m_file.write(" ", 1);
            const auto number = static_cast<float>(vector[i]);
            m_file.write(std::isfinite(number) ? number : 0.0f);
        }
        m_file.write("\n", 1);
    }

    CheckedFile& m_file;
};

} // namespace

std::string writeStl(osg::Node& model, const WriteTarget& target)
{
    CheckedFile file(target.model);
    Writer writer(file);
    const std::vector<ModelPart> parts = collectParts(model);
    for (std::size_t i = 0; i < parts.size() && file.isGood(); ++i)
        writer.write(parts[i]);
    return file.finish();
}

} // namespace vfFormats
