// SPDX-License-Identifier: MIT
// A bare program of this project's: its application with a shell that does nothing.
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/shell/StatusBar.h>

using namespace vfApplication;

namespace {

class EmptyShell : public ApplicationInterface
{
public:
    int onBeforeRun() override { return 0; }
    int onAfterRun() override { return 0; }
    int runEventLoop() override { return 0; }
    void exit(int) override {}
    void shellExtensionA() override {}
    StatusBar& getStatusBar() override { return m_statusBar; }
    void shellExtensionB() override {}
    void shellExtensionC() override {}
    void addFileToFileSystemWatcher(vfBase::VfString) override {}
    void removeFileFromFileSystemWatcher(vfBase::VfString) override {}

private:
    StatusBar m_statusBar;
};

struct EmptyProducer : ApplicationProducer
{
    ApplicationInterface* create(Application*, int&, char**, bool destroy) override
    {
        static EmptyShell* shell = new EmptyShell;
        if (destroy) {
            delete shell;
            shell = nullptr;
        }
        return shell;
    }
};

struct NoDocuments : ApplicationSetup
{
    void onRegisterDocumentType() const override {}
};

} // namespace

int main(int argc, char** argv)
{
    EmptyProducer producer;
    ApplicationProducer::Realizer = &producer;
    return Application(argc, argv, NoDocuments()).run();
}
