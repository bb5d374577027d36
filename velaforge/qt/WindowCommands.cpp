// SPDX-License-Identifier: MIT
// The shell's commands on the window: "vfApplicationQt::ActionExit", "vfApplicationQt::CommandAbout" and their kin.
#include <velaforge/application/Application.h>
#include <velaforge/base/Version.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/CommandPalette.h>
#include <velaforge/qt/internal/Docks.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/OptionsDialog.h>
#include <velaforge/qt/internal/ShellCommand.h>
#include <velaforge/qt/internal/ShellCommandRecord.h>
#include <velaforge/qt/internal/ShortcutEditor.h>
#include <velaforge/qt/internal/Text.h>

#include <QCoreApplication>
#include <QMenu>
#include <QMessageBox>

namespace vfApplication {

namespace {

/// Groups the texts for those who translate them.
struct Commands
{
    Q_DECLARE_TR_FUNCTIONS(Commands)
};

MainWindow* window()
{
    const QtApplication* shell = QtApplication::instance();
    return shell ? &shell->getImp() : nullptr;
}

struct ActionExit : ShellCommand
{
    ActionExit()
    {
        describe(Commands::tr("E&xit"), "Ctrl+Q", "application-exit",
                 Commands::tr("Close all documents and the window"));
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override { return shown.close(); }
};

struct ActionFullScreen : ShellCommand
{
    ActionFullScreen()
    {
        describe(Commands::tr("Full scree&n"), "F11", "view-fullscreen", QString());
        setChecked(window() && window()->isFullScreen());
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        shown.setWindowState(shown.windowState() ^ Qt::WindowFullScreen);
        return true;
    }
};

struct ActionResetLayout : ShellCommand
{
    ActionResetLayout()
    {
        describe(Commands::tr("&Reset layout"), nullptr, nullptr,
                 Commands::tr("Put dock windows and toolbars where they were at first"));
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        shown.docks().reset();
        return true;
    }
};

/// With the id of a dock window as argument it shows or hides that; otherwise it shows the list.
struct ActionDockWindows : ShellCommand
{
    ActionDockWindows() { describe(Commands::tr("Doc&k windows"), nullptr, nullptr, QString()); }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant& argument) override
    {
        const std::string id = argument.toString().str();
        if (!id.empty())
            return shown.docks().toggle(id);
        shown.popUp("vfApplicationQt::ActionDockWindows");
        return true;
    }
};

struct ActionToolbars : ShellCommand
{
    ActionToolbars() { describe(Commands::tr("&Toolbars"), nullptr, nullptr, QString()); }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        shown.popUp("vfApplicationQt::ActionToolbars");
        return true;
    }
};

struct ActionDocuments : ShellCommand
{
    ActionDocuments() { describe(Commands::tr("&Documents"), nullptr, nullptr, QString()); }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        shown.popUp("vfApplicationQt::ActionDocuments");
        return true;
    }
};

/// With a language such as "de" as argument it takes that; otherwise it shows the list.
struct ActionLanguage : ShellCommand
{
    ActionLanguage()
    {
        describe(Commands::tr("&Language"), nullptr, "preferences-desktop-locale", QString());
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant& argument) override
    {
        if (!argument.isEmpty())
            QtApplication::instance()->setLanguage(argument.toString());
        else
            shown.popUp("vfApplicationQt::ActionLanguage");
        return true;
    }
};

struct ActionOptions : ShellCommand
{
    ActionOptions()
    {
        describe(Commands::tr("&Options…"), "Ctrl+,", "configure",
                 Commands::tr("Change how the program works"));
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        OptionsDialog dialog(shown);
        return dialog.exec() == QDialog::Accepted;
    }
};

struct ActionCommands : ShellCommand
{
    ActionCommands()
    {
        describe(Commands::tr("Find &command…"), "Ctrl+Shift+P", "system-search",
                 Commands::tr("Search in all commands"));
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        QMenu dockWindows;
        shown.docks().fillMenu(dockWindows);
        CommandPalette palette(shown, shown.actionTable(), dockWindows);
        if (palette.exec() != QDialog::Accepted || !palette.chosen())
            return false;
        palette.chosen()->trigger();
        return true;
    }
};

struct ActionShortcuts : ShellCommand
{
    ActionShortcuts()
    {
        describe(Commands::tr("&Keyboard shortcuts…"), nullptr, "configure-shortcuts",
                 Commands::tr("Change the keys of commands"));
    }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        ShortcutEditor editor(shown, shown.actionTable());
        return editor.exec() == QDialog::Accepted;
    }
};

struct CommandAbout : ShellCommand
{
    CommandAbout() { describe(Commands::tr("&About"), nullptr, "help-about", QString()); }
    bool carryOut(MainWindow& shown, const vfBase::VfVariant&) override
    {
        const Application& application = *Application::instance(false);
        const auto text = [](const char* value) { return QString::fromUtf8(value).toHtmlEscaped(); };
        QString lines =
            QStringLiteral("<h3>%1 %2</h3>")
                .arg(text(application.getApplicationName()), text(application.getApplicationVersion()));
        if (*application.getApplicationVendorName())
            lines += QStringLiteral("<p>%1</p>").arg(text(application.getApplicationVendorName()));
        for (const char* url : {application.getApplicationUrl(), application.getApplicationVendorUrl()}) {
            if (*url)
                lines += QStringLiteral("<p><a href=\"%1\">%1</a></p>").arg(text(url));
        }
        lines += QStringLiteral("<p>%1 %2, Qt %3</p>")
                     .arg(text(getLibraryName()), text(getVersion()), QLatin1String(qVersion()));
        QMessageBox box(QMessageBox::NoIcon, Commands::tr("About"), lines, QMessageBox::Close, &shown);
        box.setObjectName(QStringLiteral("about"));
        box.setTextFormat(Qt::RichText);
        box.setIconPixmap(shown.windowIcon().pixmap(64, 64));
        box.exec();
        return true;
    }
};

const ShellCommandRecord<ActionExit> actionExit("ActionExit", "vfApplicationQt::ActionExit");
const ShellCommandRecord<ActionFullScreen> fullScreen("ActionFullScreen",
                                                      "vfApplicationQt::ActionFullScreen");
const ShellCommandRecord<ActionResetLayout> resetLayout("ActionResetLayout",
                                                        "vfApplicationQt::ActionResetLayout");
const ShellCommandRecord<ActionDockWindows> dockWindows("ActionDockWindows",
                                                        "vfApplicationQt::ActionDockWindows");
const ShellCommandRecord<ActionToolbars> toolbars("ActionToolbars", "vfApplicationQt::ActionToolbars");
const ShellCommandRecord<ActionDocuments> documents("ActionDocuments", "vfApplicationQt::ActionDocuments");
const ShellCommandRecord<ActionLanguage> language("ActionLanguage", "vfApplicationQt::ActionLanguage");
const ShellCommandRecord<ActionOptions> options("ActionOptions", "vfApplicationQt::ActionOptions");
const ShellCommandRecord<ActionCommands> commands("ActionCommands", "vfApplicationQt::ActionCommands");
const ShellCommandRecord<ActionShortcuts> shortcuts("ActionShortcuts", "vfApplicationQt::ActionShortcuts");
const ShellCommandRecord<CommandAbout> about("CommandAbout", "vfApplicationQt::CommandAbout");

} // namespace

} // namespace vfApplication
