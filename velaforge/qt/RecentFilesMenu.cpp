// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/RecentFilesMenu.h>

#include <velaforge/application/Application.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>

#include <QAction>
#include <QMenu>

namespace vfApplication {

namespace {

FileHistory& history()
{
    return *Application::instance(false)->getDocManager().getFileHistory();
}

/// "&3 hull.obj — /models": the name first, since it is what one looks for.
QString label(int number, const QString& path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    QString name = path.mid(slash + 1);
    QString directory = path.left(qMax<qsizetype>(slash, 0));
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    directory.replace(QLatin1Char('&'), QLatin1String("&&"));
    const QString place = directory.isEmpty() ? name : QStringLiteral("%1 \u2014 %2").arg(name, directory);
    return number < 10 ? QStringLiteral("&%1 %2").arg(number).arg(place) : place;
}

} // namespace

RecentFilesMenu::RecentFilesMenu(std::unique_ptr<FileExistence> existence, Open open, QObject* parent)
    : QObject(parent), m_existence(std::move(existence)), m_open(std::move(open))
{
    connect(m_existence.get(), &FileExistence::found, this, &RecentFilesMenu::markMissing);
}

RecentFilesMenu::~RecentFilesMenu() = default;

void RecentFilesMenu::fill(QMenu& menu)
{
    m_menu = &menu;
    const int count = history().getCount();
    for (int i = 0; i < count; ++i) {
        // The bytes as they are in the list: what is shown of a name that is no UTF-8 would not open it.
        const vfBase::VfString path = history().getHistoryFile(i);
        QAction* action = menu.addAction(label(i + 1, toQt(path)));
        action->setData(QByteArray(path.c_str(), qsizetype(path.str().size())));
        connect(action, &QAction::triggered, this, [this, path] { m_open(path); });
        m_existence->check(path.str());
    }
    if (count == 0)
        menu.addAction(tr("No recent files"))->setEnabled(false);
    menu.addSeparator();
    QAction* removes = menu.addAction(tr("Remove &missing files"));
    removes->setObjectName(QStringLiteral("removeMissing"));
    connect(removes, &QAction::triggered, this, [this] { showThrown([this] { removeMissing(); }); });
    QAction* clears = menu.addAction(tr("&Clear the list"));
    clears->setEnabled(count > 0);
    connect(clears, &QAction::triggered, this, [] {
        showThrown([] {
            for (int i = history().getCount(); i-- > 0;)
                history().removeFileFromHistory(i);
        });
    });
    markMissing();
}

void RecentFilesMenu::markMissing()
{
    if (!m_menu)
        return;
    bool isAnyMissing = false;
    for (QAction* action : m_menu->actions()) {
        const QByteArray path = action->data().toByteArray();
        if (path.isEmpty())
            continue;
        const bool isMissing = m_existence->state(path.toStdString()) == FileExistence::Missing;
        action->setEnabled(!isMissing);
        const QString shown = QString::fromUtf8(path);
        action->setToolTip(plainToolTip(isMissing ? tr("%1 is not there").arg(shown) : shown));
        isAnyMissing = isAnyMissing || isMissing;
    }
    if (auto* removes = m_menu->findChild<QAction*>(QStringLiteral("removeMissing")))
        removes->setEnabled(isAnyMissing);
}

void RecentFilesMenu::removeMissing()
{
    for (int i = history().getCount(); i-- > 0;) {
        if (m_existence->state(history().getHistoryFile(i).str()) == FileExistence::Missing)
            history().removeFileFromHistory(i);
    }
}

} // namespace vfApplication
