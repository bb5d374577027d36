// SPDX-License-Identifier: MIT
// A container handed by value through three calls, in a process with a second thread, so that counting is atomic for
// both sides.
#include <velaforge/base/Vector.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

/// Alive as long as the benchmark runs.
class SecondThread
{
public:
    SecondThread()
        : m_thread([this] {
              while (!m_isOver)
                  std::this_thread::sleep_for(std::chrono::milliseconds(20));
          })
    {}
    ~SecondThread()
    {
        m_isOver = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_isOver{false};
    std::thread m_thread;
};

using Shared = std::shared_ptr<std::vector<int>>;
using Ours = vfBase::Vector<int>;

int front(const Shared& container)
{
    return container->front();
}
int front(const Ours& container)
{
    return container.first();
}

// Calls that the compiler must make, each with a copy.
template <class Container>
[[gnu::noinline]] int third(Container container)
{
    benchmark::DoNotOptimize(&container);
    return front(container);
}

template <class Container>
[[gnu::noinline]] int second(Container container)
{
    benchmark::DoNotOptimize(&container);
    return third<Container>(container) + 1;
}

template <class Container>
[[gnu::noinline]] int first(Container container)
{
    benchmark::DoNotOptimize(&container);
    return second<Container>(container) + 1;
}

template <class Container>
void pass(benchmark::State& state, const Container& container)
{
    const SecondThread other;
    for (auto _ : state)
        benchmark::DoNotOptimize(first<Container>(container));
}

void passOurs(benchmark::State& state)
{
    Ours container;
    container << 1;
    pass(state, container);
}

void passPeer(benchmark::State& state)
{
    pass(state, std::make_shared<std::vector<int>>(1, 1));
}

BENCHMARK(passOurs)->Name("by value/ours");
BENCHMARK(passPeer)->Name("by value/peer");

} // namespace

BENCHMARK_MAIN();
