// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/CommandPalette.h>

#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/Text.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <vector>

namespace vfApplication {

namespace {

/// A command as the list shows it: enabled ones can be chosen.
struct Candidate
{
    int rank;
    QString name;
    QAction* action;
};

constexpr int actionRole = Qt::UserRole;

} // namespace

CommandPalette::CommandPalette(QWidget& parent, ActionTable& actions, QMenu& dockWindows)
    : QDialog(&parent),
      m_actions(actions),
      m_dockWindows(dockWindows),
      m_input(new QLineEdit(this)),
      m_list(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("commandPalette"));
    setWindowTitle(tr("Commands"));
    m_actions.addAllCommands();
    m_actions.refresh();
    m_input->setPlaceholderText(tr("Type what you want to do"));
    m_input->setClearButtonEnabled(true);
    m_input->installEventFilter(this);
    m_list->setColumnCount(2);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_list->setFocusPolicy(Qt::NoFocus);
    connect(m_input, &QLineEdit::textChanged, this, &CommandPalette::search);
    connect(m_list, &QTreeWidget::itemClicked, this, &CommandPalette::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_input);
    layout->addWidget(m_list);
    resize(520, 380);
    search(QString());
}

int CommandPalette::rank(const QString& name, const QString& typed)
{
    const qsizetype whole = name.indexOf(typed, 0, Qt::CaseInsensitive);
    if (whole >= 0)
        return whole == 0 ? 0 : (name[whole - 1].isLetterOrNumber() ? 2 : 1);
    qsizetype at = -1;
    qsizetype gaps = 0;
    for (const QChar letter : typed) {
        if (letter.isSpace())
            continue;
        const qsizetype next = name.indexOf(letter, at + 1, Qt::CaseInsensitive);
        if (next < 0)
            return -1;
        gaps += at < 0 ? 0 : next - at - 1;
        at = next;
    }
    return int(3 + gaps);
}

void CommandPalette::search(const QString& typed)
{
    std::vector<Candidate> found;
    const auto add = [&found, &typed](const QString& name, QAction* action) {
        const int value = rank(name, typed.trimmed());
        if (value >= 0)
            found.push_back({value, name, action});
    };
    for (const auto& entry : m_actions.entries()) {
        if (entry->isKnown && !entry->isForScripts)
            add(ActionTable::plainText(entry->action->text()), entry->action);
    }
    for (QAction* action : m_dockWindows.actions()) {
        if (action->isCheckable())
            add(tr("Dock window: %1").arg(ActionTable::plainText(action->text())), action);
    }
    std::sort(found.begin(), found.end(), [](const Candidate& a, const Candidate& b) {
        const auto place = [](const Candidate& one) {
            return std::make_tuple(!one.action->isEnabled(), one.rank, one.name.toCaseFolded());
        };
        return place(a) < place(b);
    });
    m_list->clear();
    for (const Candidate& candidate : found) {
        auto* item = new QTreeWidgetItem(
            m_list, {candidate.name, candidate.action->shortcut().toString(QKeySequence::NativeText)});
        item->setIcon(0, candidate.action->icon());
        item->setToolTip(0, candidate.action->objectName());
        item->setData(0, actionRole, QVariant::fromValue<QObject*>(candidate.action));
        if (!candidate.action->isEnabled())
            item->setFlags(Qt::NoItemFlags);
    }
    m_list->setCurrentItem(m_list->topLevelItem(0));
}

void CommandPalette::accept()
{
    const QTreeWidgetItem* item = m_list->currentItem();
    auto* action = item ? qobject_cast<QAction*>(item->data(0, actionRole).value<QObject*>()) : nullptr;
    if (!action || !action->isEnabled())
        return;
    m_chosen = action;
    QDialog::accept();
}

bool CommandPalette::eventFilter(QObject* object, QEvent* event)
{
    // The keys that move in the list do so while the cursor stays in the search.
    if (object == m_input && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(m_list, event);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

} // namespace vfApplication
