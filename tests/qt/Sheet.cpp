// SPDX-License-Identifier: MIT
#include "Sheet.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/documents/ReadError.h>

#include <QPlainTextEdit>

#include <fstream>
#include <stdexcept>

namespace vfTest {

namespace {

Sheet* activeSheet()
{
    const auto* application = vfApplication::Application::instance(false);
    return application ? dynamic_cast<Sheet*>(application->getActiveDocument()) : nullptr;
}

struct AddLine : vfApplication::CommandPrivate
{
    AddLine() { setName("Add line"); }
    bool canUndo() const override { return true; }
    bool Do(const vfBase::VfVariant& argument) override
    {
        sheet = sheet ? sheet : activeSheet();
        sheet->lines.push_back(argument.toString().str());
        sheet->changed();
        return true;
    }
    bool undo(const vfBase::VfVariant&) override
    {
        sheet->lines.pop_back();
        sheet->changed();
        return true;
    }
    Sheet* sheet = nullptr;
};

struct Fail : vfApplication::CommandPrivate
{
    bool canUndo() const override { return true; }
};

struct Throw : vfApplication::CommandPrivate
{
    void invoke(const vfBase::VfVariant& argument) override
    {
        if (argument.toString() == "number")
            throw 42;
        throw vfBase::BaseException("outer", std::runtime_error("it burns"));
    }
};

struct Unmade : vfApplication::CommandPrivate
{
    Unmade()
    {
        if (Sheet::isUnmade)
            throw std::runtime_error("it cannot be made");
    }
    void invoke(const vfBase::VfVariant&) override {}
};

struct Switch : vfApplication::CommandPrivate
{
    Switch()
    {
        getProperties()["checkable"] = vfBase::VfVariant(true);
        getProperties()["checked"] = vfBase::VfVariant(Sheet::isSwitchOn);
        getProperties()["text"] = vfBase::VfVariant("&Switch");
    }
    void invoke(const vfBase::VfVariant&) override { Sheet::isSwitchOn = !Sheet::isSwitchOn; }
};

struct AskFirst : vfApplication::CommandPrivate
{
    AskFirst() { getProperties()["prompt"] = vfBase::VfVariant("Which line?"); }
    void invoke(const vfBase::VfVariant& argument) override
    {
        activeSheet()->lines.push_back(argument.toString().str());
        activeSheet()->changed();
    }
};

template <class Command>
struct Record : vfBase::ClassInfo
{
    Record(const char* name, const char* id)
        : ClassInfo("sheet", name, id, &vfApplication::CommandPrivate::s_classInfo, nullptr,
                    static_cast<int>(sizeof(Command)), []() -> vfBase::VfObject* { return new Command; })
    {}
};

const Record<AddLine> addLine("AddLine", "sheet::AddLine");
const Record<Fail> fail("Fail", "sheet::Fail");
const Record<Throw> throwing("Throw", "sheet::Throw");
const Record<Unmade> unmade("Unmade", "sheet::Unmade");
const Record<Switch> switching("Switch", "sheet::Switch");
const Record<AskFirst> asking("AskFirst", "sheet::AskFirst");

} // namespace

const vfBase::ClassInfo Sheet::s_classInfo("sheet", "Sheet", "sheet::Sheet", &Document::s_classInfo, nullptr,
                                           sizeof(Sheet), []() -> vfBase::VfObject* { return new Sheet; });

const vfBase::ClassInfo SheetView::s_classInfo("sheet", "SheetView", "sheet::SheetView", &View::s_classInfo,
                                               nullptr, sizeof(SheetView),
                                               []() -> vfBase::VfObject* { return new SheetView; });

bool Sheet::isSwitchOn = false;
bool Sheet::isUnmade = false;

const vfBase::ClassInfo* Sheet::getClassInfo() const
{
    return &s_classInfo;
}

std::string Sheet::text() const
{
    std::string all;
    for (const std::string& line : lines)
        all += line + "\n";
    return all;
}

void Sheet::changed()
{
    modify(true);
    updateAllViews(nullptr);
}

bool Sheet::doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    Document::doOpenDocument(path, options);
    ++reads;
    std::ifstream file(path.str());
    if (!file)
        return false;
    std::vector<std::string> read;
    for (std::string line; std::getline(file, line);)
        read.push_back(line);
    if (!read.empty() && read[0] == "throw")
        throw std::runtime_error("a fault in the file");
    if (!read.empty() && read[0] == "number")
        throw 42;
    if (!read.empty() && read[0] == "reason")
        return vfApplication::setReadError("line 1: a word is missing");
    if (!read.empty() && read[0] == "bad")
        return false;
    lines = read;
    return true;
}

bool Sheet::deleteContents()
{
    if (!lines.empty() && lines[0] == "thorn")
        throw std::runtime_error("it does not let go");
    return true;
}

vfBase::WriteResult Sheet::doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    Document::doSaveDocument(path, options);
    if (!lines.empty() && lines.back() == "burns")
        throw std::runtime_error("the disk burns");
    if (!lines.empty() && lines.back() == "full")
        return {vfBase::WriteResult::WriteFailed, "the disk is full"};
    std::ofstream file(path.str());
    file << text() << std::flush;
    return file ? vfBase::WriteResult::Written : vfBase::WriteResult::WriteFailed;
}

const vfBase::ClassInfo* SheetView::getClassInfo() const
{
    return &s_classInfo;
}

QWidget* SheetView::createWidget(QWidget& parent)
{
    auto* edit = new QPlainTextEdit(&parent);
    edit->setReadOnly(true);
    return edit;
}

void SheetView::onUpdate(View* sender)
{
    if (auto* edit = qobject_cast<QPlainTextEdit*>(getWidget()))
        edit->setPlainText(QString::fromStdString(static_cast<Sheet*>(getDocument())->text()));
    QtView::onUpdate(sender);
}

void SheetUi::setupMenus(vfApplication::CommandItem* root)
{
    if (menus)
        menus(root);
    else
        MinimalUiSetup::setupMenus(root);
}

void SheetUi::setupViewMenus(const char* viewName, vfApplication::CommandItem* root)
{
    if (viewMenus)
        viewMenus(viewName, root);
}

void SheetUi::setupToolbars(vfApplication::CommandItem* root)
{
    if (toolbars)
        toolbars(root);
    else
        MinimalUiSetup::setupToolbars(root);
}

} // namespace vfTest
