#include "app/SessionEnd.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <QtTest>
#include <cstdio>
#include <cstdlib>

#include "support/Patience.h"

namespace kelvo::test {
namespace {

TEST(SessionEnd, EverySignalEndsOnceFromTheEventLoop) {
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        signal(number, SIG_DFL);  // the tests themselves may have been started by nohup
        int ends = 0;
        const SessionEnd sessionEnd({.end = [&ends] { ++ends; }, .keep = [] {}});
        raise(number);
        EXPECT_EQ(ends, 0) << "nothing runs in the signal itself";
        EXPECT_TRUE(QTest::qWaitFor([&ends] { return ends > 0; }, PatienceMs)) << number;
        raise(SIGTERM);
        raise(number);
        QTest::qWait(0);
        EXPECT_EQ(ends, 1) << "the question of the first may still stand";
    }
}

TEST(SessionEnd, WhatTheStarterIgnoresStaysIgnored) {
    const auto before = signal(SIGHUP, SIG_IGN);
    int ends = 0;
    {
        const SessionEnd sessionEnd({.end = [&ends] { ++ends; }, .keep = [] {}});
        raise(SIGHUP);
        QTest::qWait(0);
    }
    EXPECT_EQ(ends, 0);
    signal(SIGHUP, before);
}

TEST(SessionEndDeathTest, AnExitTakenByALibraryKeepsFirst) {
    const auto keep = [] { std::fputs("kept;", stderr); };
    EXPECT_EXIT(
        {
            const SessionEnd sessionEnd({.end = [] {}, .keep = keep});
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^kept;$");
    EXPECT_EXIT(
        {
            {
                const SessionEnd ended({.end = [] {}, .keep = keep});
            }
            std::exit(4);
        },
        testing::ExitedWithCode(4), "^$")
        << "an end in order has nothing to keep";
}

}  // namespace
}  // namespace kelvo::test
