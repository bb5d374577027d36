// SPDX-License-Identifier: MIT
// The first use of each singleton by several threads at once.
#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/Settings.h>
#include <velaforge/commands/Command.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/ModuleSettings.h>
#include <velaforge/shell/Registry.h>

#include <gmock/gmock.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

/// @return what each of eight threads gets that ask at the same moment
template <class Ask>
std::vector<const void*> askAtOnce(Ask ask)
{
    constexpr int count = 8;
    std::atomic<int> ready{0};
    std::vector<const void*> seen(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&ready, &seen, &ask, i] {
            ++ready;
            while (ready < count)
                std::this_thread::yield();
            seen[static_cast<std::size_t>(i)] = ask();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return seen;
}

template <class Ask>
void expectOne(Ask ask)
{
    const std::vector<const void*> seen = askAtOnce(ask);
    ASSERT_NE(nullptr, seen[0]);
    EXPECT_THAT(seen, testing::Each(seen[0]));
}

} // namespace

TEST(Singletons, TheRegistryOfModulesIsMadeOnce)
{
    expectOne([] { return vfApplication::ModuleRegistry::instance(false); });
}

TEST(Singletons, TheRegistryOfDockWindowsIsMadeOnce)
{
    expectOne([] { return vfApplication::DockWindowRegistry::instance(false); });
}

TEST(Singletons, TheRegistryOfOptionsPagesIsMadeOnce)
{
    expectOne([] { return &vfApplication::Registry::instance(); });
}

TEST(Singletons, TheSettingsObjectsAreMadeOnce)
{
    expectOne([] { return vfApplication::ApplicationSettings::instance(false); });
    expectOne([] { return vfApplication::ModuleSettings::instance(false); });
    expectOne([] { return vfApplication::DockWindowManagerSettings::instance(false); });
    expectOne([] { return vfApplication::FileHistorySettings::instance(false); });
}

TEST(Singletons, TheSharedDeclarationIsMadeOnce)
{
    expectOne([] { return &vfApplication::ApplicationSetup().getUiSetup(); });
}

TEST(Singletons, TheServicesAreMadeOnce)
{
    expectOne([] { return &vfBase::Settings::global(); });
    expectOne([] { return &vfBase::NotifyHandler::instance(); });
    expectOne([] { return &vfBase::ApplicationInfo::instance(); });
    expectOne([] { return &vfBase::Registry_::instance(); });
    expectOne([] { return &vfBase::Referenced::invalid(); });
    expectOne([] { return &vfApplication::Command::invalid(); });
}
