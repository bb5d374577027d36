// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QSlider;
class QTimer;
class QToolButton;

namespace vfViewer {

/// Plays what moves in the model that is looked at.
class AnimationPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AnimationPanel(QWidget& parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void refresh();
    void showTime();
    void play(bool isWanted);
    void choose(int number);
    void goTo(int step);

    std::vector<std::string> m_names; ///< among which there is a choice
    QComboBox* m_choice = nullptr;
    QToolButton* m_play = nullptr;
    QSlider* m_time = nullptr;
    QLabel* m_label = nullptr;
    QTimer* m_watch = nullptr; ///< has the time shown while it passes
    bool m_isFilling = false;
};

} // namespace vfViewer
