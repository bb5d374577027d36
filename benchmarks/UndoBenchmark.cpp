// SPDX-License-Identifier: MIT
// A million commands: done and kept, all undone, all done again.
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>

#include <QUndoCommand>
#include <QUndoStack>

#include <benchmark/benchmark.h>

#include <memory>

#include <malloc.h>

namespace {

constexpr int commandCount = 1000000;

class Add : public vfApplication::CommandPrivate
{
public:
    Add(long& sum, int amount) : m_sum(sum), m_amount(amount) { setName("Add a number"); }

    bool canUndo() const override { return true; }
    bool Do(const vfBase::VfVariant&) override
    {
        m_sum += m_amount;
        return true;
    }
    bool undo(const vfBase::VfVariant&) override
    {
        m_sum -= m_amount;
        return true;
    }

private:
    long& m_sum;
    int m_amount;
};

class QtAdd : public QUndoCommand
{
public:
    QtAdd(long& sum, int amount) : QUndoCommand(QStringLiteral("Add a number")), m_sum(sum), m_amount(amount)
    {}

    void redo() override { m_sum += m_amount; }
    void undo() override { m_sum -= m_amount; }

private:
    long& m_sum;
    int m_amount;
};

double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void check(benchmark::State& state, long sum, long expected)
{
    if (sum != expected)
        state.SkipWithError("the sum is wrong");
}

long sumOfAll()
{
    return static_cast<long>(commandCount) * (commandCount - 1) / 2;
}

// What a history is asked for, the same for both.
class OurHistory
{
public:
    void submit(int amount) { m_history.submit(vfApplication::Command(new Add(sum, amount)), true); }
    void undoAll()
    {
        while (m_history.undo()) {
        }
    }
    void redoAll()
    {
        while (m_history.redo()) {
        }
    }

    long sum = 0;

private:
    vfApplication::CommandProcessor m_history;
};

class QtHistory
{
public:
    void submit(int amount) { m_history.push(new QtAdd(sum, amount)); }
    void undoAll()
    {
        while (m_history.canUndo())
            m_history.undo();
    }
    void redoAll()
    {
        while (m_history.canRedo())
            m_history.redo();
    }

    long sum = 0;

private:
    QUndoStack m_history;
};

template <class History>
std::unique_ptr<History> filled()
{
    auto history = std::make_unique<History>();
    for (int i = 0; i < commandCount; ++i)
        history->submit(i);
    return history;
}

template <class History>
void work(benchmark::State& state)
{
    for (auto _ : state) {
        auto history = filled<History>();
        history->undoAll();
        check(state, history->sum, 0);
        history->redoAll();
        check(state, history->sum, sumOfAll());
        state.PauseTiming();
        history.reset();
        state.ResumeTiming();
    }
}

template <class History>
void letGo(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto history = filled<History>();
        state.ResumeTiming();
        history.reset();
    }
}

template <class History>
void memory(benchmark::State& state)
{
    for (auto _ : state) {
        const double before = allocatedBytes();
        const auto history = filled<History>();
        state.counters["bytes"] = (allocatedBytes() - before) / commandCount;
    }
}

BENCHMARK(work<OurHistory>)->Name("undo/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(work<QtHistory>)->Name("undo/QUndoStack")->Unit(benchmark::kMillisecond);
BENCHMARK(memory<OurHistory>)->Name("undo memory/ours")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(memory<QtHistory>)->Name("undo memory/QUndoStack")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(letGo<OurHistory>)->Name("undo let go/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(letGo<QtHistory>)->Name("undo let go/QUndoStack")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
