// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ViewFrame.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/QtView.h>
#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace vfApplication {

ViewFrame::ViewFrame(QtView& view) : m_view(view)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
}

void ViewFrame::setContents(QWidget& widget, bool hasLogo, bool hasSlider)
{
    layout()->addWidget(&widget);
    setFocusProxy(&widget);
    if (hasLogo) {
        auto* logo = new QLabel(&widget);
        logo->setObjectName(QStringLiteral("viewLogo"));
        logo->setAttribute(Qt::WA_TransparentForMouseEvents);
        const int size = 2 * fontMetrics().height();
        const char* name = vfBase::ApplicationInfo::instance().getApplicationIconName();
        logo->setPixmap(findPicture(toQt(vfBase::VfString(name))).pixmap(size, size));
        logo->setFixedSize(size, size);
        logo->move(size / 4, size / 4);
    }
    if (hasSlider) {
        m_slider = new QSlider(Qt::Horizontal, this);
        m_slider->setObjectName(QStringLiteral("documentSlider"));
        m_slider->setPageStep(1);
        layout()->addWidget(m_slider);
        connect(m_slider, &QSlider::valueChanged, this,
                [this](int index) { showThrown([&] { showDocument(index); }); });
    }
}

void ViewFrame::updateSlider()
{
    if (!m_slider)
        return;
    const auto documents = Application::instance(false)->getDocManager().getDocumentList();
    const QSignalBlocker blocker(m_slider);
    m_slider->setRange(0, qMax(0, int(documents.size()) - 1));
    m_slider->setValue(int(documents.indexOf(m_view.getDocument())));
    m_slider->setEnabled(documents.size() > 1);
    m_slider->setToolTip(tr("Documents"));
}

void ViewFrame::showDocument(int index)
{
    const auto documents = Application::instance(false)->getDocManager().getDocumentList();
    if (index >= 0 && unsigned(index) < documents.size())
        documents[unsigned(index)]->activate();
}

} // namespace vfApplication
