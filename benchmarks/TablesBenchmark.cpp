// SPDX-License-Identifier: MIT
// Looking modules and dock windows up, beside the tables of the standard library that do the same.
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int moduleCount = 30;
constexpr int windowCount = 60;

std::vector<std::string> ids(const std::string& kind, int count)
{
    std::vector<std::string> all;
    all.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        all.push_back("solar::" + kind + std::to_string(i * 7919 % 1000));
    return all;
}

struct SomeModule : vfApplication::Module
{
    explicit SomeModule(std::string moduleId) : id(std::move(moduleId)) {}
    const char* getId() const override { return id.c_str(); }
    const char* getModuleName() const override { return id.c_str(); }
    std::string id;
};

/// What one would write by hand.
struct ModuleTable
{
    vfApplication::Module* find(const std::string& id)
    {
        const std::lock_guard<std::recursive_mutex> guard(mutex);
        const auto found = modules.find(id);
        return found == modules.end() ? nullptr : found->second.get();
    }
    std::recursive_mutex mutex;
    std::map<std::string, std::shared_ptr<vfApplication::Module>> modules;
};

void modulesOurs(benchmark::State& state)
{
    const std::vector<std::string> names = ids("Module", moduleCount);
    auto* registry = vfApplication::ModuleRegistry::instance(false);
    for (const std::string& name : names)
        registry->addModule(new SomeModule(name));
    for (auto _ : state) {
        for (const std::string& name : names)
            benchmark::DoNotOptimize(registry->getModule(name));
    }
}
BENCHMARK(modulesOurs)->Name("modules look up/ours");

void modulesPeer(benchmark::State& state)
{
    const std::vector<std::string> names = ids("Module", moduleCount);
    ModuleTable table;
    for (const std::string& name : names)
        table.modules[name] = std::make_shared<SomeModule>(name);
    for (auto _ : state) {
        for (const std::string& name : names)
            benchmark::DoNotOptimize(table.find(name));
    }
}
BENCHMARK(modulesPeer)->Name("modules look up/std");

void windowsOurs(benchmark::State& state)
{
    const std::vector<std::string> names = ids("Window", windowCount);
    vfApplication::DockWindowManager manager;
    std::vector<std::unique_ptr<vfApplication::DockWindow>> windows;
    for (const std::string& name : names) {
        windows.push_back(std::make_unique<vfApplication::DockWindow>(name.c_str()));
        manager.addDockWindow(windows.back().get());
    }
    for (auto _ : state) {
        for (const std::string& name : names)
            benchmark::DoNotOptimize(manager.findDockWindow(name.c_str()));
    }
    for (const auto& window : windows)
        manager.removeDockWindow(window.get());
}
BENCHMARK(windowsOurs)->Name("dock windows look up/ours");

void windowsPeer(benchmark::State& state)
{
    const std::vector<std::string> names = ids("Window", windowCount);
    std::vector<std::unique_ptr<vfApplication::DockWindow>> windows;
    std::map<std::string, vfApplication::DockWindow*> table;
    for (const std::string& name : names) {
        windows.push_back(std::make_unique<vfApplication::DockWindow>(name.c_str()));
        table[name] = windows.back().get();
    }
    for (auto _ : state) {
        for (const std::string& name : names) {
            const char* key = name.c_str(); // as callers have it
            const auto found = table.find(key);
            benchmark::DoNotOptimize(found == table.end() ? nullptr : found->second);
        }
    }
}
BENCHMARK(windowsPeer)->Name("dock windows look up/std");

} // namespace

BENCHMARK_MAIN();
