// SPDX-License-Identifier: MIT
#include "qt/ListPanels.h"

#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "model/ViewerDocuments.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/Printable.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/scene/Measurement.h>

#include <QEvent>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace vfViewer {

namespace {

FailureLog* messageLog()
{
    auto* application = vfApplication::Application::instance(false);
    return application ? dynamic_cast<FailureLog*>(&application->getDocManager()) : nullptr;
}

} // namespace

ListPanel::ListPanel(QWidget& parent, const char* name)
    : QWidget(&parent), m_list(new QListWidget(this)), m_clear(new QPushButton(this))
{
    m_list->setObjectName(QLatin1String(name));
    m_list->setWordWrap(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_list);
    layout->addWidget(m_clear, 0, Qt::AlignRight);
}

void ListPanel::start()
{
    connect(m_clear, &QPushButton::clicked, this, [this] {
        clearAll();
        refresh();
    });
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
    refresh();
}

void ListPanel::refresh()
{
    m_clear->setText(clearText());
    m_list->clear();
    fill(*m_list);
    m_clear->setEnabled(m_list->count() > 0);
    m_list->scrollToBottom();
}

void ListPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        refresh();
    QWidget::changeEvent(event);
}

MessagesPanel::MessagesPanel(QWidget& parent) : ListPanel(parent, "messages")
{
    start();
}

void MessagesPanel::fill(QListWidget& list)
{
    const FailureLog* log = messageLog();
    if (!log)
        return;
    for (const Message& message : log->messages()) {
        const QString path = QString::fromStdString(message.path);
        auto* item = new QListWidgetItem(QStringLiteral("%1: %2").arg(
            QFileInfo(path).fileName(), QString::fromStdString(vfBase::printable(message.text).str())));
        item->setToolTip(vfApplication::plainToolTip(path));
        const QStyle::StandardPixmap icon = message.kind == Message::Failure ? QStyle::SP_MessageBoxCritical
                                            : message.kind == Message::Warning
                                                ? QStyle::SP_MessageBoxWarning
                                                : QStyle::SP_MessageBoxInformation;
        item->setIcon(style()->standardIcon(icon));
        list.addItem(item);
    }
}

void MessagesPanel::clearAll()
{
    if (FailureLog* log = messageLog())
        log->clearMessages();
}

QString MessagesPanel::clearText() const
{
    return tr("Clear");
}

MeasurementsPanel::MeasurementsPanel(QWidget& parent) : ListPanel(parent, "measurements")
{
    start();
}

void MeasurementsPanel::fill(QListWidget& list)
{
    const ModelDocument* document = activeModel();
    if (!document)
        return;
    for (const vfScene::Measurement& measurement : document->getMeasurements()) {
        const QString value =
            QString::fromStdString(vfScene::describeValue(measurement, document->getUnits()));
        const QString name = measurement.kind == vfScene::MeasureKind::Angle    ? tr("Angle")
                             : measurement.kind == vfScene::MeasureKind::Radius ? tr("Radius")
                                                                                : tr("Distance");
        list.addItem(QStringLiteral("%1: %2").arg(name, value));
    }
}

void MeasurementsPanel::clearAll()
{
    if (ModelDocument* document = activeModel())
        document->clearMeasurements();
}

QString MeasurementsPanel::clearText() const
{
    return tr("Clear");
}

} // namespace vfViewer
