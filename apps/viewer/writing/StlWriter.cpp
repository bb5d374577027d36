// SPDX-License-Identifier: MIT
#include "writing/StlWriter.h"

#include "writing/CheckedFile.h"
#include "writing/PrimitiveWalk.h"
#include "writing/VertexArray.h"

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/Transform>

#include <algorithm>
#include <cmath>
#include <vector>

namespace vfViewer {

namespace {

class Writer : public osg::NodeVisitor
{
public:
    explicit Writer(CheckedFile& file) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_file(file)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        const std::string above = m_name;
        if (!node.getName().empty())
            m_name = node.getName();
        traverse(node);
        m_name = above;
    }

    void apply(osg::Geometry& geometry) override
    {
        const VertexArray vertices(geometry.getVertexArray());
        if (vertices.size() == 0 || geometry.getNumPrimitiveSets() == 0 || !m_file.isGood())
            return;
        const osg::Matrixd matrix = osg::computeLocalToWorld(getNodePath());
        std::string name = m_name.empty() ? geometry.getName() : m_name;
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '_');
        bool isEmpty = true;
        std::vector<osg::Vec3d> corners;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            walkPrimitives(*primitives, [&](PrimitiveKind kind, const unsigned int* indices,
                                            std::size_t count) {
                if (kind != PrimitiveKind::Face || std::any_of(indices, indices + count, [&](unsigned int i) {
                        return i >= vertices.size();
                    }))
                    return;
                if (isEmpty)
                    m_file.write("solid " + name + "\n");
                isEmpty = false;
                corners.clear();
                for (std::size_t i = 0; i < count; ++i)
                    corners.push_back(vertices[indices[i]] * matrix);
                for (std::size_t i = 1; i + 1 < count; ++i)
                    writeFacet(corners[0], corners[i], corners[i + 1]);
            });
        }
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
    std::string m_name;
};

} // namespace

std::string writeStl(osg::Node& model, const std::string& path)
{
    CheckedFile file(path);
    Writer writer(file);
    model.accept(writer);
    return file.finish();
}

} // namespace vfViewer
