// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <array>

class QCheckBox;
class QSlider;

namespace vfViewer {

class ModelView;

/// The planes that cut the model in the current view.
class SectionsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit SectionsPanel(QWidget& parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Row
    {
        QCheckBox* isOn = nullptr;
        QSlider* position = nullptr;
        QCheckBox* isFlipped = nullptr;
    };

    void retranslate();
    void refresh();
    void apply(std::size_t axis);

    std::array<Row, 3> m_rows;
    bool m_isFilling = false;
};

} // namespace vfViewer
