// SPDX-License-Identifier: MIT
#pragma once

#include "support/Recorder.h"
#include "support/RecordingDocument.h"
#include "support/RecordingShell.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>

#include <initializer_list>

namespace vfTest {

/// An application with a recording shell, manager and callback. Nothing is recorded yet when it is there.
struct RecordingApplication
{
    RecordingApplication(std::initializer_list<const char*> arguments = {"program"})
        : line(arguments),
          application(line.argc(), line.argv(), vfApplication::ApplicationSetup()),
          manager(*new RecordingManager)
    {
        application.setDocManager(&manager);
        application.registerCallback(&callback);
        recorder().take();
    }

    /// Opens a document and forgets what was recorded meanwhile.
    RecordingDocument* open(const char* path)
    {
        auto* document = static_cast<RecordingDocument*>(manager.createDocument(path, vfBase::Options()));
        recorder().take();
        return document;
    }

    RecordingProducer producer;
    CommandLine line;
    RecordingCallback callback;
    vfApplication::Application application;
    RecordingManager& manager;
};

} // namespace vfTest
