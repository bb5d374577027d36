// SPDX-License-Identifier: MIT
#pragma once

#include "support/TemporaryDirectory.h"
#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/readers/FileGate.h>

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
        vfFormats::FileGate::install();
    }
    ~Reading() override { vfFormats::ReadJob::waitForThreads(); } // as the program does

    /// Waits for what comes of a file.
    static vfFormats::ReadOutcome read(const std::string& path, const vfFormats::ReadLimits& limits = {},
                                       vfFormats::ReadKind kind = vfFormats::ReadKind::Model)
    {
        vfFormats::ReadJob job(kind, path, limits);
        while (!job.wait(1000)) {
        }
        return job.take();
    }

    TemporaryDirectory directory;
};

} // namespace vfTest
