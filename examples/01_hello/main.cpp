// SPDX-License-Identifier: MIT
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>

#include <fstream>
#include <iostream>

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

struct Page : View // what shows it, here on the terminal
{
    bool onCreate(Document*, const vfBase::Options&) override { return true; }
    void onUpdate(View*) override { std::cout << static_cast<Note*>(getDocument())->firstLine << std::endl; }
};

const vfBase::ClassInfo note("hello", "Note", "hello::Note", &Document::s_classInfo, nullptr, sizeof(Note),
                             []() -> vfBase::VfObject* { return new Note; });
const vfBase::ClassInfo page("hello", "Page", "hello::Page", &View::s_classInfo, nullptr, sizeof(Page),
                             []() -> vfBase::VfObject* { return new Page; });

struct Setup : ApplicationSetup // the kinds of document, by extension
{
    void onRegisterDocumentType() const override
    {
        new DocTemplate(&Application::instance(false)->getDocManager(), "Notes", "txt", "", "txt", "", "",
                        &note, &page, DocTemplate::Visible, 0, vfBase::Options());
    }
};

int main(int argc, char** argv)
{
    HeadlessApplicationProducer::install();
    return Application(argc, argv, Setup()).run();
}
