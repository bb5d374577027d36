// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ActionTable.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/internal/Icons.h>
#include <velaforge/qt/internal/Prompts.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/WindowSettings.h>
#include <velaforge/toolkit/CommandNames.h>

#include <osg/Notify>

#include <QCoreApplication>
#include <QSet>

namespace vfApplication {

namespace {

QString translateOfCommand(const vfBase::VfString& text)
{
    return text.empty() ? QString() : QCoreApplication::translate("Command", text.c_str());
}

/// What the item says, or else the command.
class Properties
{
public:
    Properties(const CommandItem& item, const Command::Properties& command) : m_item(item), m_command(command)
    {}

    vfBase::VfVariant value(const char* key) const
    {
        const vfBase::VfVariant declared = m_item.getProperty(key);
        return declared.isEmpty() ? m_command.value(key, vfBase::VfVariant()) : declared;
    }

    /// Texts of declarations are in the language of their program. A command may say its own in that of the
    /// user; where it knows nothing of languages, the context "Command" does.
    QString text(const char* key) const
    {
        const vfBase::VfString declared = m_item.getProperty(key).toString();
        if (declared.empty())
            return translateOfCommand(m_command.value(key, vfBase::VfVariant()).toString());
        const char* context = m_item.getContext();
        return QCoreApplication::translate(*context ? context : "CommandItem", declared.c_str());
    }

    bool flag(const char* key, bool otherwise) const
    {
        const vfBase::VfVariant held = value(key);
        return held.is<bool>() ? held.toBool() : otherwise;
    }

private:
    const CommandItem& m_item;
    const Command::Properties& m_command;
};

/// @return keys as they are written in a declaration or in the settings
QList<QKeySequence> readKeys(const QString& text)
{
    return text.isEmpty() ? QList<QKeySequence>()
                          : QKeySequence::listFromString(text, QKeySequence::PortableText);
}

const Document* activeDocument()
{
    const Application* application = Application::instance(false);
    return application ? application->getActiveDocument() : nullptr;
}

} // namespace

ActionTable::ActionTable(QWidget& window) : QObject(&window), m_window(window) {}

QString ActionTable::labelFor(const std::string& name)
{
    QString text = toQt(name);
    text = text.mid(text.lastIndexOf(QLatin1String("::")) + 1);
    if (text.startsWith(QLatin1Char(':')))
        text.remove(0, 1);
    for (const char* prefix : {"Action", "Command"}) {
        if (text.startsWith(QLatin1String(prefix)) && text.size() > qsizetype(qstrlen(prefix)))
            text.remove(0, qsizetype(qstrlen(prefix)));
    }
    QString label;
    for (const QChar letter : text) {
        if (letter.isUpper() && !label.isEmpty())
            label += QLatin1Char(' ') + QString(letter.toLower());
        else
            label += letter;
    }
    return QCoreApplication::translate("Command", label.toUtf8().constData());
}

QString ActionTable::plainText(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != QLatin1Char('&'))
            plain += text[i];
        else if (i + 1 < text.size() && text[i + 1] == QLatin1Char('&'))
            plain += text[i++];
    }
    while (plain.endsWith(QLatin1Char('.')) || plain.endsWith(QChar(0x2026)))
        plain.chop(1);
    return plain;
}

ActionTable::Entry& ActionTable::entry(const std::string& name, const CommandItem& item)
{
    const vfBase::VfVariant argument = item.getProperty("argument");
    for (const auto& known : m_entries) {
        if (known->name != name || known->argument.toString() != argument.toString())
            continue;
        Entry& found = *known;
        // A toolbar names a command, and a menu says how it is called.
        if (found.item.getProperties().isEmpty() && !item.getProperties().isEmpty()) {
            found.item = item;
            refresh(found);
        }
        return found;
    }
    auto made = std::make_unique<Entry>();
    made->name = name;
    made->argument = argument;
    made->item = item;
    made->action = new QAction(this);
    made->action->setObjectName(toQt(name));
    made->action->setShortcutContext(Qt::WindowShortcut); // a dialog has keys of its own
    const Entry* chosen = made.get();
    connect(made->action, &QAction::triggered, this, [this, chosen] { run(chosen->name, chosen->argument); });
    m_window.addAction(made->action);
    for (QWidget* window : m_otherWindows) {
        if (window)
            window->addAction(made->action);
    }
    Entry& added = *made;
    m_entries.push_back(std::move(made));
    refresh(added);
    return added;
}

void ActionTable::addWindow(QWidget& window)
{
    m_otherWindows.removeAll(nullptr);
    m_otherWindows.append(&window);
    for (const auto& entry : m_entries)
        window.addAction(entry->action);
}

QAction* ActionTable::action(const CommandItem& item)
{
    return entry(item.getCommand(), item).action;
}

QAction* ActionTable::action(const std::string& name)
{
    return entry(name, CommandItem()).action;
}

void ActionTable::addAllCommands()
{
    for (const vfBase::VfString& name : commandNames())
        entry(name.str(), CommandItem());
    applyKeys();
}

void ActionTable::refresh()
{
    // A command that is made to be asked may have menus made anew, which adds entries.
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        refresh(*m_entries[i]);
}

void ActionTable::refreshUnknown(Entry& entry, const std::string& problem)
{
    const QString text = Properties(entry.item, Command::Properties()).text("text");
    entry.isKnown = false;
    entry.action->setText(text.isEmpty() ? labelFor(entry.name) : text);
    entry.action->setEnabled(false);
    entry.action->setToolTip(tr("This command is not available"));
    if (entry.isMissTold)
        return;
    entry.isMissTold = true;
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::WARN) << "A menu or toolbar names the command "
                               << vfBase::printable(vfBase::VfString(entry.name)) << ", which "
                               << vfBase::printable(problem) << std::endl;
}

void ActionTable::refresh(Entry& entry)
{
    std::string problem = "is not registered";
    try {
        const Command command = Command::getCommandByName(entry.name);
        if (command.isValid()) {
            show(entry, command);
            return;
        }
    } catch (...) {
        problem = "cannot be made: " + vfBase::BaseException::describeCurrent();
    }
    refreshUnknown(entry, problem);
}

void ActionTable::show(Entry& entry, const Command& command)
{
    entry.isKnown = true;
    const Command::Properties ofCommand = command.getProperties();
    const Properties properties(entry.item, ofCommand);
    QString text = properties.text("text");
    if (text.isEmpty())
        text = labelFor(entry.name);
    entry.action->setText(text);
    const QString tip = properties.text("toolTip");
    entry.toolTip = tip.isEmpty() ? plainText(text) : tip;
    showToolTip(entry);
    entry.action->setStatusTip(tip);
    if (entry.action->icon().isNull())
        entry.action->setIcon(findIcon(toQt(properties.value("icon").toString())));
    // What can be undone changes a document, so there must be one.
    const bool canRun = !command.canUndo() || activeDocument();
    entry.action->setEnabled(canRun && properties.flag("enabled", true));
    entry.isForScripts = properties.flag("scriptOnly", false);
    entry.action->setCheckable(properties.flag("checkable", false));
    joinGroup(entry, properties.value("group").toString().str());
    entry.action->setChecked(properties.flag("checked", false));
    entry.defaultKeys = readKeys(toQt(properties.value("shortcut").toString()));
}

/// Says the key, too: that is how people learn it.
void ActionTable::showToolTip(const Entry& entry)
{
    const QString key = entry.action->shortcut().toString(QKeySequence::NativeText);
    entry.action->setToolTip(
        plainToolTip(key.isEmpty() ? entry.toolTip : QStringLiteral("%1 (%2)").arg(entry.toolTip, key)));
}

void ActionTable::joinGroup(const Entry& entry, const std::string& group)
{
    if (group.empty() || entry.action->actionGroup())
        return;
    QActionGroup*& actions = m_groups[group];
    if (!actions) {
        actions = new QActionGroup(this);
        // Choosing what is on turns it off again: the command says what is on then.
        actions->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    }
    actions->addAction(entry.action);
}

void ActionTable::applyKeys()
{
    const WindowSettings::Shortcuts& chosen = WindowSettings::instance().shortcuts;
    QSet<QKeySequence> taken;
    const auto give = [&taken](Entry& entry, const QList<QKeySequence>& keys) {
        QList<QKeySequence> free;
        for (const QKeySequence& key : keys) {
            if (!taken.contains(key))
                free.append(key);
            taken.insert(key);
        }
        entry.action->setShortcuts(free);
        if (entry.isKnown)
            showToolTip(entry);
    };
    // What the user chose comes before what is declared.
    for (const auto& entry : m_entries) {
        const auto own = chosen.find(entry->name);
        if (own != chosen.end() && entry->argument.isEmpty())
            give(*entry, readKeys(toQt(own->second)));
    }
    for (const auto& entry : m_entries) {
        if (chosen.find(entry->name) == chosen.end() || !entry->argument.isEmpty())
            give(*entry, entry->defaultKeys);
    }
}

bool ActionTable::run(const std::string& name, const vfBase::VfVariant& argument)
{
    bool isDone = true;
    try {
        Command command = Command::getCommandByName(name);
        if (!command.isValid()) {
            Q_EMIT failed(labelFor(name), tr("There is no such command."));
            return false;
        }
        vfBase::VfVariant given = argument;
        if (given.isEmpty() && !askForArgument(m_window, command.getProperties(), given))
            return false;
        const Document* document = activeDocument();
        command.invoke(given);
        // Command::invoke returns nothing; a command that can be undone is in the undo history if it succeeded.
        if (command.canUndo() && document && document == activeDocument())
            isDone = document->getCommandProcessor()->getCurrentCommand() == command;
        if (!isDone)
            Q_EMIT failed(labelFor(name), tr("The command could not be carried out."));
    } catch (...) {
        isDone = false;
        Q_EMIT failed(labelFor(name), currentReason());
    }
    Q_EMIT commandRun();
    return isDone;
}

} // namespace vfApplication
