// SPDX-License-Identifier: MIT
#pragma once

#include "reading/FileGate.h"
#include "reading/ReadJob.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/NotifyHandler.h>

#include <gtest/gtest.h>

namespace vfTest {

/// Tests that read files in processes of their own.
class Reading : public testing::Test
{
protected:
    Reading()
    {
        vfBase::NotifyHandler::instance().install();
        vfViewer::FileGate::install();
    }
    ~Reading() override { vfViewer::ReadJob::waitForThreads(); } // as the program does

    /// Waits for what comes of a file.
    static vfViewer::ReadOutcome read(const std::string& path, const vfViewer::ReadLimits& limits = {},
                                      vfViewer::ReadKind kind = vfViewer::ReadKind::Model)
    {
        vfViewer::ReadJob job(kind, path, limits);
        while (!job.wait(1000)) {
        }
        return job.take();
    }

    TemporaryDirectory directory;
};

} // namespace vfTest
