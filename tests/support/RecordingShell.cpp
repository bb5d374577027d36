// SPDX-License-Identifier: MIT
#include "RecordingShell.h"

#include "Recorder.h"

#include <velaforge/documents/Document.h>

namespace vfTest {

RecordingShell::~RecordingShell()
{
    record("~Shell");
}

int RecordingShell::onBeforeRun()
{
    record("onBeforeRun");
    if (inBeforeRun)
        inBeforeRun();
    return beforeRunResult;
}

int RecordingShell::onAfterRun()
{
    record("onAfterRun");
    if (inAfterRun)
        inAfterRun();
    return afterRunResult;
}

int RecordingShell::runEventLoop()
{
    record("runEventLoop");
    if (inEventLoop)
        inEventLoop();
    return eventLoopResult;
}

void RecordingShell::exit(int code)
{
    record("exit " + std::to_string(code));
}

vfApplication::StatusBar& RecordingShell::getStatusBar()
{
    record("getStatusBar");
    return statusBar;
}

void RecordingShell::addFileToFileSystemWatcher(vfBase::VfString path)
{
    record("watch " + path.str());
}

void RecordingShell::removeFileFromFileSystemWatcher(vfBase::VfString path)
{
    record("unwatch " + path.str());
}

RecordingProducer::RecordingProducer() : m_shell(std::make_unique<RecordingShell>())
{
    Realizer = this;
}

RecordingProducer::~RecordingProducer()
{
    Realizer = nullptr;
}

vfApplication::ApplicationInterface* RecordingProducer::create(vfApplication::Application*, int&, char**,
                                                               bool destroy)
{
    record(destroy ? "destroy shell" : "create shell");
    if (inCreate && !destroy)
        inCreate();
    return m_shell.get();
}

void RecordingCallback::onApplicationInterfaceCreated(vfApplication::Application*)
{
    record("onApplicationInterfaceCreated");
    if (inInterfaceCreated)
        inInterfaceCreated();
}

int RecordingCallback::onApplicationInitialized(vfApplication::Application*)
{
    record("onApplicationInitialized");
    if (inInitialized)
        inInitialized();
    return initializedResult;
}

void RecordingCallback::onClosingDocument(vfApplication::Document* document)
{
    record("callback closing " + document->getFilename().str());
}

void RecordingCallback::onDocumentCreated(vfApplication::Document* document)
{
    record("callback created " + document->getFilename().str());
}

CommandLine::CommandLine(std::initializer_list<const char*> arguments)
    : CommandLine(std::vector<std::string>(arguments.begin(), arguments.end()))
{}

CommandLine::CommandLine(const std::vector<std::string>& arguments)
    : m_texts(arguments), m_argc(static_cast<int>(m_texts.size()))
{
    for (std::string& text : m_texts)
        m_argv.push_back(text.data());
    m_argv.push_back(nullptr);
}

} // namespace vfTest
