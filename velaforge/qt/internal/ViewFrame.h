// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QWidget>

class QSlider;

namespace vfApplication {

class QtView;

/// A view's widget with what decorates it: the logo and the slider through the open documents, as far as they are
/// declared.
class VFAPPLICATIONQT_EXPORT ViewFrame : public QWidget
{
    Q_OBJECT

public:
    explicit ViewFrame(QtView& view);

    QtView& view() const { return m_view; }

    /// @param widget  becomes a child
    void setContents(QWidget& widget, bool hasLogo, bool hasSlider);

    /// Sets the slider to where the document is among the open ones.
    void updateSlider();

private:
    void showDocument(int index);

    QtView& m_view;
    QSlider* m_slider = nullptr;
};

} // namespace vfApplication
