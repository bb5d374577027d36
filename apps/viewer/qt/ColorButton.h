// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPushButton>

#include <osg/Vec3f>

namespace vfViewer {

/// Shows a colour, and asks for another when it is pressed.
class ColorButton : public QPushButton
{
    Q_OBJECT

public:
    ColorButton(const osg::Vec3f& color, QWidget* parent);

    /// Red, green and blue from 0 to 1.
    osg::Vec3f color() const { return m_color; }
    void setColor(const osg::Vec3f& color);

private:
    void choose();

    osg::Vec3f m_color;
};

} // namespace vfViewer
