// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"

#include <velaforge/documents/ReadError.h>

#include <gtest/gtest.h>

#include <stdexcept>

TEST(ReadError, TheReasonThatWasSetIsTakenOnce)
{
    EXPECT_FALSE(vfApplication::setReadError("line 7"));
    EXPECT_EQ("line 7", vfApplication::takeReadError());
    EXPECT_EQ("", vfApplication::takeReadError());
}

TEST(ReadError, KeepsItsReasonWhenItIsWrapped)
{
    const vfBase::BaseException wrapped("in createDocument", vfApplication::ReadError("line 7"));
    EXPECT_STREQ("line 7", wrapped.getReason());
}

TEST(ReadError, WhateverADocumentThrowsHasAReasonForTheUser)
{
    vfTest::RecordingApplication run;
    vfTest::makeTemplate(run.manager);
    const auto reasonOf = [&run](auto thrown) -> std::string {
        vfTest::RecordingDocument::inOpen = [thrown] { throw thrown; };
        try {
            run.manager.createDocument("a.obj", vfBase::Options());
        } catch (const vfBase::BaseException& problem) {
            return problem.getReason();
        }
        return "nothing was thrown";
    };
    EXPECT_EQ("line 7", reasonOf(vfApplication::ReadError("line 7")));
    EXPECT_EQ("the parser gave up", reasonOf(std::runtime_error("the parser gave up")));
    EXPECT_EQ("an unknown error", reasonOf(42));
}
