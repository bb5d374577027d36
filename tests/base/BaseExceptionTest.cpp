// SPDX-License-Identifier: MIT
#include <velaforge/base/BaseException.h>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

TEST(BaseException, TheReasonIsTheInnermostMessageHoweverOftenItWasWrapped)
{
    using vfBase::BaseException;
    EXPECT_STREQ("plain", BaseException("plain").getReason());
    const BaseException inner("inner", std::runtime_error("root"));
    BaseException outer("outer", inner);
    EXPECT_STREQ("root", outer.getReason());
    EXPECT_STREQ("root", BaseException("more", outer).getReason());
    outer.setReason("told");
    EXPECT_STREQ("told", BaseException("more", outer).getReason());
    EXPECT_STREQ("outer: inner: root", outer.what());
}

TEST(BaseException, DescribesWhateverIsThrown)
{
    const auto describe = [](auto thrown) {
        try {
            throw thrown;
        } catch (...) {
            return vfBase::BaseException::describeCurrent();
        }
    };
    EXPECT_EQ("root", describe(std::runtime_error("root")));
    EXPECT_EQ("root", describe(vfBase::BaseException("outer", std::runtime_error("root"))));
    EXPECT_EQ("not enough memory", describe(std::bad_alloc()));
    EXPECT_EQ("not enough memory", describe(vfBase::BaseException("outer", std::bad_alloc())));
    EXPECT_EQ("an unknown error", describe(42));
    EXPECT_EQ("an unknown error", describe(std::runtime_error("")));
}
