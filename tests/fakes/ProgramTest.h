// The fixture of the tests that run the program's logic over the fakes.
#pragma once

#include "engine/GroupPace.h"
#include "fakes/FakePlatform.h"
#include "fakes/ScriptedUser.h"
#include "session/Session.h"
#include "shell/Startup.h"

#include <gtest/gtest.h>

using fake::user;
using platform::Fault;

/// Every test begins with fresh fakes and session state: drive C: with the program's folder, and no
/// saved setup. At the end no step may be left and no file may be open.
struct ProgramTest : testing::Test {
    void SetUp() override;
    void TearDown() override;
    void StartProgram() { StartUp(); }
};

/// A fixture with the program started.
template<typename Test>
struct Started : Test {
    void SetUp() override {
        Test::SetUp();
        Test::StartProgram();
    }
};
using StartedTest = Started<ProgramTest>;
