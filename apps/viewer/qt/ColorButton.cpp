// SPDX-License-Identifier: MIT
#include "qt/ColorButton.h"

#include <QColorDialog>
#include <QPixmap>

namespace vfViewer {

ColorButton::ColorButton(const osg::Vec3f& color, QWidget* parent) : QPushButton(parent)
{
    setIconSize(QSize(48, 16));
    setColor(color);
    connect(this, &QPushButton::clicked, this, &ColorButton::choose);
}

void ColorButton::setColor(const osg::Vec3f& color)
{
    m_color = color;
    QPixmap shown(iconSize());
    const QColor filled = QColor::fromRgbF(color.x(), color.y(), color.z());
    shown.fill(filled);
    setIcon(QIcon(shown));
    setToolTip(filled.name());
}

void ColorButton::choose()
{
    const QColor chosen =
        QColorDialog::getColor(QColor::fromRgbF(m_color.x(), m_color.y(), m_color.z()), this);
    // What is not changed keeps its exact value.
    if (chosen.isValid())
        setColor({chosen.redF(), chosen.greenF(), chosen.blueF()});
}

} // namespace vfViewer
