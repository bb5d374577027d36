// SPDX-License-Identifier: MIT
// Each allocation of an operation fails in turn: what comes of it is the state before or the one after.
#include "Classes.h"

#include "support/TemporaryDirectory.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/dockwindows/DockWindowManager.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Number of the allocation that fails, counted down; 0 while none does.
thread_local int countdown = 0;
thread_local bool hasFailed = false;

void* allocate(std::size_t size)
{
    if (countdown > 0 && --countdown == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    if (void* memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

using vfApplication::Application;
using vfLife::Command;
using vfLife::Options;

int doneCount = 0;

/// Counts how often it is done.
struct Counted : vfApplication::CommandPrivate
{
    bool canUndo() const override { return true; }
    bool Do(const vfLife::VfVariant&) override
    {
        ++doneCount;
        return true;
    }
    bool undo(const vfLife::VfVariant&) override
    {
        --doneCount;
        return true;
    }
};

/// Writes its file, so that a state can tell whether it was written.
class WrittenDocument : public vfLife::Document
{
public:
    static const vfBase::ClassInfo s_classInfo;
    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }

protected:
    vfLife::WriteResult doSaveDocument(const vfLife::VfString&, const Options&) override
    {
        ++written;
        return vfLife::WriteResult(vfLife::WriteResult::Written);
    }

public:
    int written = 0;
};

const vfBase::ClassInfo WrittenDocument::s_classInfo("life", "WrittenDocument", "life::WrittenDocument",
                                                     &vfLife::Document::s_classInfo, nullptr,
                                                     sizeof(WrittenDocument), []() -> vfBase::VfObject* {
                                                         return new WrittenDocument;
                                                     });

struct Kinds : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        new vfApplication::DocTemplate(
            &Application::instance(false)->getDocManager(), "a kind of document with a long name", "obj", "",
            "obj", "life::WrittenDocument", "life::View", nullptr, nullptr, 1, 0, Options());
    }
};

const char* const path = "/a/path/that/is/long/enough/to/need/memory/of/its/own/document.obj";

/// A program with an open document.
struct Program
{
    Program()
    {
        vfLife::installToolkit();
        application.emplace(count, arguments, Kinds());
    }
    WrittenDocument& open(const char* file)
    {
        return dynamic_cast<WrittenDocument&>(*application->getDocManager().createDocument(file, Options()));
    }

    char name[5] = "life";
    char* arguments[2] = {name, nullptr};
    int count = 1;
    std::optional<Application> application;
};

/// An operation, and the state that it changes as a text.
struct Trial
{
    std::function<void()> operate;
    std::function<std::string()> state;
};

std::string describe(const Trial& trial, int n)
{
    countdown = n;
    try {
        trial.operate();
    } catch (const std::exception&) {
    }
    countdown = 0;
    return std::string(hasFailed ? "failed" : "whole") + "\n" + trial.state();
}

/// Runs a trial in a process of its own, with the nth allocation failing.
std::string outcome(const std::function<std::string(int)>& run, int n)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        dup2(open("/dev/null", O_WRONLY), 1);
        const std::string text = run(n);
        const bool isWritten = write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
        std::exit(isWritten ? 0 : 99);
    }
    close(ends[1]);
    std::string text;
    char buffer[512];
    for (ssize_t size; (size = read(ends[0], buffer, sizeof(buffer))) > 0;)
        text.append(buffer, static_cast<std::size_t>(size));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? text : "ended with " + std::to_string(status) + " after: " + text;
}

/// Checks that each failing allocation leaves the state before the operation or the one after it.
void checkEachAllocation(const std::function<std::string(int)>& run, const std::string& before)
{
    const std::string whole = outcome(run, 0);
    ASSERT_EQ(0u, whole.find("whole\n")) << whole;
    const std::string after = whole.substr(6);
    ASSERT_NE(before, after);
    int failures = 0;
    for (int n = 1;; ++n) {
        const std::string text = outcome(run, n);
        if (text.find("whole\n") == 0)
            break;
        ASSERT_EQ(0u, text.find("failed\n")) << "allocation " << n << ": " << text;
        const std::string state = text.substr(7);
        EXPECT_TRUE(state == before || state == after) << "allocation " << n << " leaves\n"
                                                       << state << "\nbetween\n"
                                                       << before << "\nand\n"
                                                       << after;
        ++failures;
    }
    EXPECT_GT(failures, 0) << "nothing was allocated";
}

std::string number(int value)
{
    return std::to_string(value);
}

/// The history of a document: what is done, what can be undone and redone, and how much of it there is.
std::string historyOf(vfApplication::CommandProcessor& history)
{
    std::string text = "done " + number(doneCount);
    int redos = 0;
    while (history.redo())
        ++redos;
    int undos = 0;
    while (history.undo())
        ++undos;
    return text + ", " + number(redos) + " to redo, " + number(undos - redos) + " to undo";
}

Command counted()
{
    return Command(new Counted);
}

/// A history of three commands, two of which are undone.
void fill(vfApplication::CommandProcessor& history)
{
    for (int i = 0; i < 3; ++i)
        history.submit(counted(), true);
    history.undo();
    history.undo();
}

std::string tryHistory(int n, const std::function<void(vfApplication::CommandProcessor&)>& operate)
{
    Program program;
    vfApplication::CommandProcessor& history = *program.open(path).getCommandProcessor();
    fill(history);
    return describe({[&] { operate(history); }, [&] { return historyOf(history); }}, n);
}

} // namespace

TEST(OutOfMemory, OpeningADocumentHappensWholeOrNotAtAll)
{
    const auto run = [](int n) {
        Program program;
        return describe({[&] { program.application->getDocManager().createDocument(path, Options()); },
                         [&] {
                             const auto* active = program.application->getActiveDocument();
                             return number(program.application->getDocManager().getNumDocuments()) +
                                    " listed, " + number(vfLife::population().documents) + " documents, " +
                                    number(vfLife::population().views) + " views, active " +
                                    (active ? active->getFilename().str() : "none");
                         }},
                        n);
    };
    checkEachAllocation(run, "0 listed, 0 documents, 0 views, active none");
}

TEST(OutOfMemory, ACommandThatRanIsStored)
{
    const auto run = [](int n) {
        return tryHistory(n,
                          [](vfApplication::CommandProcessor& history) { history.submit(counted(), true); });
    };
    checkEachAllocation(run, "done 1, 2 to redo, 1 to undo");
}

TEST(OutOfMemory, ACommandThatIsTheFirstAfterAllWereUndoneIsStored)
{
    const auto run = [](int n) {
        return tryHistory(n, [](vfApplication::CommandProcessor& history) {
            history.undo();
            history.submit(counted(), true);
        });
    };
    // The undo before it may stand alone: it allocates nothing, so the state between is not reached by it.
    const std::string whole = outcome(run, 0);
    EXPECT_EQ("whole\ndone 1, 0 to redo, 1 to undo", whole);
    for (int n = 1;; ++n) {
        const std::string text = outcome(run, n);
        if (text.find("whole\n") == 0)
            break;
        EXPECT_TRUE(text == "failed\ndone 0, 3 to redo, 0 to undo" ||
                    text == "failed\ndone 1, 0 to redo, 1 to undo")
            << "allocation " << n << ": " << text;
    }
}

TEST(OutOfMemory, StoringHappensWholeOrNotAtAll)
{
    const auto run = [](int n) {
        return tryHistory(n, [](vfApplication::CommandProcessor& history) { history.store(counted()); });
    };
    checkEachAllocation(run, "done 1, 2 to redo, 1 to undo");
}

TEST(OutOfMemory, UndoAndRedoNeedNoMemory)
{
    for (const bool isUndo : {true, false}) {
        const auto run = [isUndo](int n) {
            return tryHistory(n, [isUndo](vfApplication::CommandProcessor& history) {
                isUndo ? history.undo() : history.redo();
            });
        };
        EXPECT_EQ(isUndo ? "whole\ndone 0, 3 to redo, 0 to undo" : "whole\ndone 2, 1 to redo, 2 to undo",
                  outcome(run, 1));
    }
}

TEST(OutOfMemory, WhatWasWrittenCountsAsSaved)
{
    const auto run = [](int n) {
        Program program;
        WrittenDocument& document = program.open("a.obj");
        document.modify(true);
        return describe({[&] { document.onSaveDocument(path, Options::invalid()); },
                         [&] {
                             return number(document.written) + " written, " +
                                    (document.isModified() ? "modified, " : "clean, ") +
                                    document.getFilename().str() + " " + document.getTitle().str();
                         }},
                        n);
    };
    checkEachAllocation(run, "0 written, modified, a.obj a.obj");
}

TEST(OutOfMemory, SavingUnderAnotherNameHappensWholeOrNotAtAll)
{
    const auto run = [](int n) {
        Program program;
        program.application->setDocManager(nullptr);
        auto* manager = new vfLife::Manager;
        program.application->setDocManager(manager);
        Kinds().onRegisterDocumentType();
        WrittenDocument& document = program.open(path);
        document.modify(true);
        return describe({[&] { document.saveAs(Options::invalid()); },
                         [&] {
                             return number(document.written) + " written, " +
                                    (document.isModified() ? "modified, " : "clean, ") +
                                    document.getFilename().str();
                         }},
                        n);
    };
    checkEachAllocation(run, std::string("0 written, modified, ") + path);
}

TEST(OutOfMemory, ADockWindowIsAddedWholeOrNotAtAll)
{
    const auto run = [](int n) {
        Program program;
        vfApplication::DockWindowManager& windows = program.application->getDockWindowManager();
        vfLife::DockWindow own("a dock window whose id needs memory of its own");
        return describe({[&] { windows.addDockWindow(&own); },
                         [&] {
                             const std::string text =
                                 number(static_cast<int>(windows.getNumDockWindows())) + " listed";
                             windows.removeDockWindow(&own);
                             return text;
                         }},
                        n);
    };
    checkEachAllocation(run, "0 listed");
}

TEST(OutOfMemory, AnApplicationIsConstructedWholeOrNotAtAll)
{
    const auto run = [](int n) {
        vfLife::installToolkit();
        char name[] = "life";
        char* arguments[] = {name, nullptr};
        int count = 1;
        std::optional<Application> application;
        return describe({[&] { application.emplace(count, arguments, Kinds()); },
                         [&] { return std::string(Application::instance(false) ? "there" : "none"); }},
                        n);
    };
    checkEachAllocation(run, "none");
}
