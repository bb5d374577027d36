// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/shell/StatusBar.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace vfTest {

/// A shell that records each call and answers as it is told.
class RecordingShell : public vfApplication::ApplicationInterface
{
public:
    ~RecordingShell() override;

    int onBeforeRun() override;
    int onAfterRun() override;
    int runEventLoop() override;
    void exit(int code) override;
    void shellExtensionA() override {}
    vfApplication::StatusBar& getStatusBar() override;
    void shellExtensionB() override {}
    void shellExtensionC() override {}
    void addFileToFileSystemWatcher(vfBase::VfString path) override;
    void removeFileFromFileSystemWatcher(vfBase::VfString path) override;

    int beforeRunResult = 0;
    int afterRunResult = 0;
    int eventLoopResult = 0;
    std::function<void()> inBeforeRun;
    std::function<void()> inEventLoop;
    std::function<void()> inAfterRun;
    vfApplication::StatusBar statusBar;
};

/// Makes recording shells. Stands in ApplicationProducer::Realizer from its construction to its end.
class RecordingProducer : public vfApplication::ApplicationProducer
{
public:
    RecordingProducer();
    ~RecordingProducer() override;

    vfApplication::ApplicationInterface* create(vfApplication::Application* application, int& argc,
                                                char** argv, bool destroy) override;

    /// @return the shell, made beforehand so that a test can tell it how to answer
    RecordingShell& shell() { return *m_shell; }

    std::function<void()> inCreate;

private:
    std::unique_ptr<RecordingShell> m_shell;
};

/// A callback that records each call.
struct RecordingCallback : vfApplication::ApplicationCallback
{
    void onApplicationInterfaceCreated(vfApplication::Application* application) override;
    int onApplicationInitialized(vfApplication::Application* application) override;
    void onClosingDocument(vfApplication::Document* document) override;
    void onDocumentCreated(vfApplication::Document* document) override;
    void callbackExtension() override {}

    int initializedResult = 0;
    std::function<void()> inInterfaceCreated;
    std::function<void()> inInitialized;
};

/// A command line of the test's own, as main would get it.
class CommandLine
{
public:
    CommandLine(std::initializer_list<const char*> arguments);
    explicit CommandLine(const std::vector<std::string>& arguments);

    int& argc() { return m_argc; }
    char** argv() { return m_argv.data(); }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_argv;
    int m_argc;
};

} // namespace vfTest
