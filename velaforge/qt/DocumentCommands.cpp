// SPDX-License-Identifier: MIT
// The shell's commands on documents: "vfApplicationQt::ActionOpen" and its kin.
#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/View.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/DocumentArea.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ShellCommand.h>
#include <velaforge/qt/internal/ShellCommandRecord.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/ViewFrame.h>

#include <QCoreApplication>
#include <QDir>

namespace vfApplication {

namespace {

/// Groups the texts for those who translate them.
struct Commands
{
    Q_DECLARE_TR_FUNCTIONS(Commands)
};

DocManager& manager()
{
    return Application::instance(false)->getDocManager();
}

/// An undo step's name, or nothing.
QString quoted(const QString& pattern, const QString& plain, const Command& command)
{
    const QString name =
        command.isValid() ? QCoreApplication::translate("Command", command.getName()) : QString();
    return name.isEmpty() ? plain : pattern.arg(name);
}

bool open(const vfBase::VfString& path)
{
    return Application::instance(false)->openDocument(path.c_str(), vfBase::Options()) != nullptr;
}

struct ActionNew : ShellCommand
{
    ActionNew()
    {
        describe(Commands::tr("&New"), "Ctrl+N", "document-new", Commands::tr("Make an empty document"));
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        return Application::instance(false)->newDocument() != nullptr;
    }
};

/// With a path as argument it opens that, otherwise what is chosen.
struct ActionOpen : ShellCommand
{
    ActionOpen() { describe(Commands::tr("&Open…"), "Ctrl+O", "document-open", Commands::tr("Open files")); }
    bool carryOut(MainWindow&, const vfBase::VfVariant& argument) override
    {
        const vfBase::VfString path = argument.toString();
        if (!path.empty())
            return open(path);
        auto* asking = dynamic_cast<QtDocManager*>(&manager());
        if (!asking)
            return false;
        bool isDone = true;
        for (const vfBase::VfString& chosen : asking->selectFilesToOpen())
            isDone = open(chosen) && isDone;
        return isDone;
    }
};

/// With a path as argument it opens that; otherwise it shows the list.
struct ActionOpenRecent : ShellCommand
{
    ActionOpenRecent() { describe(Commands::tr("Open &recent"), nullptr, "document-open-recent", QString()); }
    bool carryOut(MainWindow& window, const vfBase::VfVariant& argument) override
    {
        const vfBase::VfString path = argument.toString();
        if (!path.empty())
            return open(path);
        window.popUp("vfApplicationQt::ActionOpenRecent");
        return true;
    }
};

struct ActionSave : ShellCommand
{
    ActionSave()
    {
        describe(Commands::tr("&Save"), "Ctrl+S", "document-save",
                 Commands::tr("Write the document to its file"));
        setEnabled(document() && (document()->isModified() || !document()->alreadySaved()));
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        if (!document())
            return false;
        auto* asking = dynamic_cast<QtDocManager*>(&manager());
        return asking ? asking->save(*document()) : document()->save().success();
    }
};

/// With a path as argument it writes that, otherwise what is chosen.
struct ActionSaveAs : ShellCommand
{
    ActionSaveAs()
    {
        describe(Commands::tr("Save &as…"), "Ctrl+Shift+S", "document-save-as",
                 Commands::tr("Write the document to another file"));
        setEnabled(document());
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant& argument) override
    {
        if (!document())
            return false;
        const vfBase::VfString path = vfBase::absolutePath(argument.toString());
        if (auto* asking = dynamic_cast<QtDocManager*>(&manager()))
            return path.empty() ? asking->saveAs(*document()) : asking->save(*document(), path);
        return path.empty() ? document()->saveAs().success()
                            : document()->onSaveDocument(path, vfBase::Options::invalid()).success();
    }
};

struct ActionRevert : ShellCommand
{
    ActionRevert()
    {
        describe(Commands::tr("Re&vert"), nullptr, "document-revert",
                 Commands::tr("Read the document again from its file"));
        setEnabled(document() && document()->alreadySaved());
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        if (!document())
            return false;
        auto* asking = dynamic_cast<QtDocManager*>(&manager());
        return asking ? asking->revertWithQuestion(*document()) : document()->revert();
    }
};

struct ActionClose : ShellCommand
{
    ActionClose()
    {
        describe(Commands::tr("&Close"), "Ctrl+W", "document-close", Commands::tr("Close the view"));
        setEnabled(document());
    }
    bool carryOut(MainWindow& window, const vfBase::VfVariant&) override
    {
        ViewFrame* frame = window.activeFrame();
        if (frame)
            window.closeFrame(*frame);
        else if (document())
            Application::instance(false)->closeDocument(document());
        return true;
    }
};

struct ActionCloseAll : ShellCommand
{
    ActionCloseAll()
    {
        describe(Commands::tr("Close a&ll"), "Ctrl+Shift+W", nullptr, Commands::tr("Close all documents"));
        setEnabled(document());
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        auto* asking = dynamic_cast<QtDocManager*>(&manager());
        return asking ? asking->closeAllWithQuestions() : manager().closeDocuments(false);
    }
};

/// Moves in the history of a document. A document that stands where it was saved last has no changes.
bool moveInHistory(Document* document, bool (CommandProcessor::*move)())
{
    if (!document)
        return false;
    const vfBase::LifeWatch<Document> watch(document);
    const bool isDone = (document->getCommandProcessor()->*move)();
    if (isDone && !watch.isGone() && !document->getCommandProcessor()->isDirty())
        document->modify(false);
    return isDone;
}

struct ActionUndo : ShellCommand
{
    ActionUndo()
    {
        CommandProcessor* history = document() ? document()->getCommandProcessor() : nullptr;
        const vfBase::LifeWatch<Document> watch(document());
        const bool canUndo = history && history->canUndo() && !watch.isGone();
        describe(canUndo
                     ? quoted(Commands::tr("&Undo: %1"), Commands::tr("&Undo"), history->getCurrentCommand())
                     : Commands::tr("&Undo"),
                 "Ctrl+Z", "edit-undo", QString());
        setEnabled(canUndo);
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        return moveInHistory(document(), &CommandProcessor::undo);
    }
};

struct ActionRedo : ShellCommand
{
    ActionRedo()
    {
        CommandProcessor* history = document() ? document()->getCommandProcessor() : nullptr;
        const vfBase::LifeWatch<Document> watch(document());
        const bool canRedo = history && history->canRedo() && !watch.isGone();
        describe(canRedo ? quoted(Commands::tr("&Redo: %1"), Commands::tr("&Redo"), history->getRedoCommand())
                         : Commands::tr("&Redo"),
                 "Ctrl+Shift+Z; Ctrl+Y", "edit-redo", QString());
        setEnabled(canRedo);
    }
    bool carryOut(MainWindow&, const vfBase::VfVariant&) override
    {
        return moveInHistory(document(), &CommandProcessor::redo);
    }
};

struct ActionNewView : ShellCommand
{
    ActionNewView()
    {
        describe(Commands::tr("New &view"), nullptr, "window-new",
                 Commands::tr("Show the document once more"));
        setEnabled(document());
    }
    bool carryOut(MainWindow& window, const vfBase::VfVariant&) override
    {
        Document* shown = document();
        if (!shown || !shown->getDocumentTemplate())
            return false;
        View* view = shown->getDocumentTemplate()->createView(shown, vfBase::Options());
        if (!view)
            return false;
        const vfBase::LifeWatch<View> watch(view);
        window.showNames(*shown);
        view->onUpdate(nullptr);
        if (!watch.isGone())
            view->activate(true);
        return !watch.isGone();
    }
};

const ShellCommandRecord<ActionNew> actionNew("ActionNew", "vfApplicationQt::ActionNew");
const ShellCommandRecord<ActionOpen> actionOpen("ActionOpen", "vfApplicationQt::ActionOpen");
const ShellCommandRecord<ActionOpenRecent> openRecent("ActionOpenRecent",
                                                      "vfApplicationQt::ActionOpenRecent");
const ShellCommandRecord<ActionSave> actionSave("ActionSave", "vfApplicationQt::ActionSave");
const ShellCommandRecord<ActionSaveAs> actionSaveAs("ActionSaveAs", "vfApplicationQt::ActionSaveAs");
const ShellCommandRecord<ActionRevert> actionRevert("ActionRevert", "vfApplicationQt::ActionRevert");
const ShellCommandRecord<ActionClose> actionClose("ActionClose", "vfApplicationQt::ActionClose");
const ShellCommandRecord<ActionCloseAll> actionCloseAll("ActionCloseAll", "vfApplicationQt::ActionCloseAll");
const ShellCommandRecord<ActionUndo> actionUndo("ActionUndo", "vfApplicationQt::ActionUndo");
const ShellCommandRecord<ActionRedo> actionRedo("ActionRedo", "vfApplicationQt::ActionRedo");
const ShellCommandRecord<ActionNewView> actionNewView("ActionNewView", "vfApplicationQt::ActionNewView");

} // namespace

} // namespace vfApplication
