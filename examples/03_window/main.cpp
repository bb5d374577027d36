// SPDX-License-Identifier: MIT
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/QtView.h>

#include <QLabel>

#include <fstream>

using namespace vfApplication;

struct Note : Document // a kind of document: it reads its file
{
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options&) override
    {
        std::ifstream file(path.str());
        return static_cast<bool>(std::getline(file, firstLine));
    }
    void concreteDocumentOperation() override {}
    std::string firstLine;
};

struct Page : QtView // what shows it, here a label
{
    QWidget* createWidget(QWidget& parent) override { return label = new QLabel(&parent); }
    void onUpdate(View*) override
    {
        label->setText(QString::fromStdString(static_cast<Note*>(getDocument())->firstLine));
    }
    QLabel* label = nullptr;
};

const vfBase::ClassInfo note("window", "Note", "window::Note", &Document::s_classInfo, nullptr, sizeof(Note),
                             []() -> vfBase::VfObject* { return new Note; });
const vfBase::ClassInfo page("window", "Page", "window::Page", &View::s_classInfo, nullptr, sizeof(Page),
                             []() -> vfBase::VfObject* { return new Page; });

// The ten lines of the window: menus, toolbar, tabs, dialogs, recent files and all that comes with them.
struct Setup : ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        new DocTemplate(&Application::instance(false)->getDocManager(), "Notes", "txt", "", "txt", "", "Page",
                        &note, &page, DocTemplate::Visible, 0, vfBase::Options());
    }
};

int main(int argc, char** argv)
{
    QtApplicationProducer::install();
    return Application(argc, argv, Setup()).run();
}
