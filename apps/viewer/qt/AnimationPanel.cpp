// SPDX-License-Identifier: MIT
#include "qt/AnimationPanel.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"

#include <velaforge/qt/QtApplication.h>

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QSlider>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

#include <cmath>

namespace vfViewer {

namespace {

constexpr int sliderSteps = 1000;
constexpr int watchInterval = 50; // milliseconds

} // namespace

AnimationPanel::AnimationPanel(QWidget& parent)
    : QWidget(&parent),
      m_choice(new QComboBox(this)),
      m_play(new QToolButton(this)),
      m_time(new QSlider(Qt::Horizontal, this)),
      m_label(new QLabel(this)),
      m_watch(new QTimer(this))
{
    m_choice->setObjectName(QStringLiteral("animationChoice"));
    m_play->setObjectName(QStringLiteral("animationPlay"));
    m_time->setObjectName(QStringLiteral("animationTime"));
    m_label->setObjectName(QStringLiteral("animationLabel"));
    m_play->setCheckable(true);
    m_time->setRange(0, sliderSteps);
    m_choice->setVisible(false);
    m_choice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // names may be long
    auto* grid = new QGridLayout(this);
    grid->addWidget(m_choice, 0, 0, 1, 3);
    grid->addWidget(m_play, 1, 0);
    grid->addWidget(m_time, 1, 1);
    grid->addWidget(m_label, 1, 2);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(1, 1);
    connect(m_play, &QToolButton::toggled, this, &AnimationPanel::play);
    connect(m_time, &QSlider::valueChanged, this, &AnimationPanel::goTo);
    connect(m_choice, &QComboBox::activated, this, &AnimationPanel::choose);
    m_watch->setInterval(watchInterval);
    connect(m_watch, &QTimer::timeout, this, &AnimationPanel::showTime);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
    retranslate();
    refresh();
}

void AnimationPanel::retranslate()
{
    m_play->setToolTip(tr("Play"));
    m_time->setToolTip(tr("Time"));
    m_choice->setToolTip(tr("Animation"));
}

void AnimationPanel::refresh()
{
    ModelDocument* document = activeModel();
    const bool moves = document && !document->getAnimation().isEmpty();
    setEnabled(moves);
    const std::vector<std::string> names =
        moves ? document->getAnimation().getNames() : std::vector<std::string>();
    m_isFilling = true;
    if (names != m_names) { // a list that is open stays open
        m_names = names;
        m_choice->clear();
        for (const std::string& name : names)
            m_choice->addItem(QString::fromStdString(name));
        m_choice->setVisible(names.size() > 1);
    }
    if (!names.empty())
        m_choice->setCurrentIndex(int(document->getAnimation().getCurrent()));
    m_isFilling = false;
    showTime();
}

void AnimationPanel::showTime()
{
    ModelDocument* document = activeModel();
    const bool moves = document && !document->getAnimation().isEmpty();
    const double duration = moves ? document->getAnimation().getDuration() : 0;
    const double time = moves ? document->getAnimation().getTime() : 0;
    const bool isPlaying = moves && document->getAnimation().isPlaying();
    m_isFilling = true;
    m_time->setEnabled(duration > 0);
    m_time->setValue(duration > 0 ? int(std::lround(time / duration * sliderSteps)) : 0);
    m_play->setChecked(isPlaying);
    m_play->setIcon(style()->standardIcon(isPlaying ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    m_isFilling = false;
    const QLocale locale;
    m_label->setText(
        duration > 0 ? tr("%1 of %2 s").arg(locale.toString(time, 'f', 2), locale.toString(duration, 'f', 2))
                     : tr("%1 s").arg(locale.toString(time, 'f', 2)));
    if (isPlaying && !m_watch->isActive())
        m_watch->start();
    else if (!isPlaying)
        m_watch->stop();
}

void AnimationPanel::play(bool isWanted)
{
    ModelDocument* document = activeModel();
    if (m_isFilling || !document)
        return;
    document->play(isWanted);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

void AnimationPanel::choose(int number)
{
    ModelDocument* document = activeModel();
    if (m_isFilling || !document || !document->getAnimation().setCurrent(std::size_t(number)))
        return;
    document->setAnimationTime(0);
    showTime();
}

void AnimationPanel::goTo(int step)
{
    ModelDocument* document = activeModel();
    if (m_isFilling || !document)
        return;
    document->setAnimationTime(document->getAnimation().getDuration() * step / sliderSteps);
    showTime();
}

void AnimationPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        showTime();
    }
    QWidget::changeEvent(event);
}

} // namespace vfViewer
