// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ShortcutEditor.h>

#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/WindowSettings.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vfApplication {

namespace {

constexpr int commandRole = Qt::UserRole;

QString written(const QList<QKeySequence>& keys, QKeySequence::SequenceFormat format)
{
    return QKeySequence::listToString(keys, format);
}

} // namespace

ShortcutEditor::ShortcutEditor(QWidget& parent, ActionTable& actions)
    : QDialog(&parent),
      m_actions(actions),
      m_search(new QLineEdit(this)),
      m_list(new QTreeWidget(this)),
      m_edit(new QKeySequenceEdit(this)),
      m_message(new QLabel(this)),
      m_buttons(new QDialogButtonBox(
          QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults, this))
{
    setObjectName(QStringLiteral("shortcutEditor"));
    setWindowTitle(tr("Keyboard shortcuts"));
    m_actions.addAllCommands();
    m_search->setPlaceholderText(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_list->setHeaderLabels({tr("Command"), tr("Keys")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(0, Qt::AscendingOrder);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    auto* clear = new QPushButton(tr("No keys"), this);
    connect(clear, &QPushButton::clicked, m_edit, &QKeySequenceEdit::clear);
    connect(m_search, &QLineEdit::textChanged, this, &ShortcutEditor::filter);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ShortcutEditor::showCurrent);
    connect(m_edit, &QKeySequenceEdit::keySequenceChanged, this, [this](const QKeySequence& keys) {
        if (const QTreeWidgetItem* item = m_list->currentItem())
            setKeys(item->data(0, commandRole).toString(),
                    keys.isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{keys});
    });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ShortcutEditor::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &ShortcutEditor::reject);
    connect(m_buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &ShortcutEditor::restoreDefaults);
    auto* editing = new QHBoxLayout;
    editing->addWidget(new QLabel(tr("Keys:"), this));
    editing->addWidget(m_edit, 1);
    editing->addWidget(clear);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_list);
    layout->addLayout(editing);
    layout->addWidget(m_message);
    layout->addWidget(m_buttons);
    resize(560, 480);
    fill();
}

void ShortcutEditor::fill()
{
    for (const auto& entry : m_actions.entries()) {
        if (!entry->isKnown || entry->isForScripts || !entry->argument.isEmpty())
            continue;
        const QString command = toQt(entry->name);
        m_keys[command] = entry->action->shortcuts();
        auto* item = new QTreeWidgetItem(m_list, {ActionTable::plainText(entry->action->text()), QString()});
        item->setToolTip(0, command);
        item->setData(0, commandRole, command);
        item->setIcon(0, entry->action->icon());
    }
    m_before = m_keys;
    m_list->setCurrentItem(m_list->topLevelItem(0));
    showClashes();
}

void ShortcutEditor::filter(const QString& typed)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        const bool matches = item->text(0).contains(typed, Qt::CaseInsensitive) ||
                             item->text(1).contains(typed, Qt::CaseInsensitive);
        item->setHidden(!matches);
    }
}

void ShortcutEditor::showCurrent()
{
    const QTreeWidgetItem* item = m_list->currentItem();
    const QSignalBlocker blocker(m_edit);
    const QList<QKeySequence> keys =
        item ? m_keys.value(item->data(0, commandRole).toString()) : QList<QKeySequence>();
    m_edit->setKeySequence(keys.isEmpty() ? QKeySequence() : keys.first());
    m_edit->setEnabled(item);
}

void ShortcutEditor::setKeys(const QString& command, const QList<QKeySequence>& keys)
{
    m_keys[command] = keys;
    showClashes();
}

bool ShortcutEditor::clash(const QKeySequence& one, const QKeySequence& other)
{
    return !one.isEmpty() && !other.isEmpty() &&
           (one.matches(other) != QKeySequence::NoMatch || other.matches(one) != QKeySequence::NoMatch);
}

QStringList ShortcutEditor::clashes() const
{
    QStringList clashing;
    for (auto one = m_keys.begin(); one != m_keys.end(); ++one) {
        for (auto other = m_keys.begin(); other != m_keys.end(); ++other) {
            if (one == other)
                continue;
            for (const QKeySequence& a : one.value()) {
                for (const QKeySequence& b : other.value()) {
                    if (clash(a, b) && !clashing.contains(one.key()))
                        clashing << one.key();
                }
            }
        }
    }
    clashing.sort();
    return clashing;
}

void ShortcutEditor::showClashes()
{
    const QStringList clashing = clashes();
    QStringList names;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        const QString command = item->data(0, commandRole).toString();
        const bool isClashing = clashing.contains(command);
        item->setText(1, written(m_keys.value(command), QKeySequence::NativeText));
        item->setForeground(1, isClashing ? QBrush(QColor(192, 32, 32)) : QBrush());
        if (isClashing)
            names << QStringLiteral("%1 (%2)").arg(item->text(0), item->text(1));
    }
    m_message->setText(names.isEmpty() ? QString()
                                       : tr("These clash: %1").arg(names.join(QLatin1String(", "))));
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(names.isEmpty());
}

void ShortcutEditor::restoreDefaults()
{
    for (const auto& entry : m_actions.entries()) {
        if (m_keys.contains(toQt(entry->name)) && entry->argument.isEmpty())
            m_keys[toQt(entry->name)] = entry->defaultKeys;
    }
    showClashes();
    showCurrent();
}

void ShortcutEditor::accept()
{
    if (!clashes().isEmpty())
        return;
    WindowSettings::Shortcuts& chosen = WindowSettings::instance().shortcuts;
    for (const auto& entry : m_actions.entries()) {
        const auto keys = m_keys.constFind(toQt(entry->name));
        const bool isChanged = keys != m_keys.constEnd() && keys.value() != m_before.value(keys.key());
        if (!isChanged || !entry->argument.isEmpty())
            continue;
        // What is as it is declared is not kept, so that it follows when the declaration changes.
        if (keys.value() == entry->defaultKeys)
            chosen.erase(entry->name);
        else
            chosen[entry->name] = written(keys.value(), QKeySequence::PortableText).toStdString();
    }
    m_actions.applyKeys();
    QDialog::accept();
}

} // namespace vfApplication
