#include "tests/support/gtest_x.h"

#include "qip/Components/qipCommand.h"

#include "qip/Components/qipConfirmCommand.h"
#include "qip/Components/qipQuitCommand.h"
#include "qip/Components/qipTCmdBtn.h"
#include "qip/Monitors/qipSensor.h"
#include "tests/support/StdErr.h"

#include <memory>
#include <string>

namespace {

// Logs what it is told.
class LoggingSensor : public qipSensor
{
public:
    int activate() override
    {
        log += "+";
        return qipSensor::activate();
    }
    int deactivate() override
    {
        log += "-";
        return qipSensor::deactivate();
    }
    std::string log;
};

class TestCommand : public qipCommand
{
public:
    explicit TestCommand(int disabled = 0, int result = 0)
        : qipCommand("test", disabled), _result(result)
    {}
    int doit() override
    {
        ++nDone;
        return _result;
    }
    int nDone = 0;

private:
    int _result;
};

class TestConfirmCommand : public qipConfirmCommand
{
public:
    TestConfirmCommand() : qipConfirmCommand("test", 0, 1) {}
    int doit() override
    {
        ++nDone;
        return 0;
    }
    int nDone = 0;
};

TEST(qipCommandTest, ExecutesWhenItIsEnabled)
{
    TestCommand command(0, 7);
    EXPECT_EQ(command.execute(), 7);
    EXPECT_EQ(command.nDone, 1);
}

TEST(qipCommandTest, ADisabledCommandDoesNothing)
{
    TestCommand command(1);
    TestCommand other(1);
    command.inActivationList(&other);
    EXPECT_EQ(command.execute(), -1);
    EXPECT_EQ(command.nDone, 0);
    EXPECT_FALSE(other.isEnabled());
}

TEST(qipCommandTest, DisablingNests)
{
    TestCommand command;
    LoggingSensor sensor;
    command.registerServer(&sensor);
    EXPECT_EQ(command.disable(), 0);
    EXPECT_EQ(command.disable(), 0);
    EXPECT_EQ(sensor.log, "-");
    EXPECT_EQ(command.enable(), 1);
    EXPECT_EQ(sensor.log, "-");
    EXPECT_EQ(sensor.status(), qipGadgetInactive);
    EXPECT_EQ(command.enable(), 0);
    EXPECT_EQ(sensor.log, "-+");
}

TEST(qipCommandTest, EnablingAnEnabledCommandDoesNothing)
{
    TestCommand command;
    LoggingSensor sensor;
    command.registerServer(&sensor);
    EXPECT_EQ(command.enable(), 0);
    EXPECT_EQ(sensor.log, "");
    EXPECT_TRUE(command.isEnabled());
}

TEST(qipCommandTest, ASensorStartsInTheCommandsState)
{
    TestCommand disabled(1);
    TestCommand enabled;
    LoggingSensor sensor;
    EXPECT_EQ(disabled.registerServer(&sensor), 1);
    EXPECT_EQ(sensor.status(), qipGadgetInactive);
    LoggingSensor other;
    EXPECT_EQ(enabled.registerServer(&other), 1);
    EXPECT_EQ(other.status(), qipGadgetActive);
    EXPECT_EQ(enabled.registerServer(&sensor), 2);
    EXPECT_EQ(sensor.status(), qipGadgetActive);
}

TEST(qipCommandTest, ARemovedSensorIsLeftAlone)
{
    TestCommand command;
    LoggingSensor sensor;
    command.registerServer(&sensor);
    EXPECT_EQ(command.removeServer(&sensor), 0);
    EXPECT_EQ(command.removeServer(&sensor), -1);
    command.disable();
    EXPECT_EQ(sensor.log, "");
}

TEST(qipCommandTest, ADestroyedCommandSwitchesItsSensorsOffAndLeavesThem)
{
    LoggingSensor sensor;
    LoggingSensor other;
    {
        TestCommand command;
        command.registerServer(&sensor);
        command.registerServer(&other);
    }
    EXPECT_EQ(sensor.log, "-");
    EXPECT_EQ(sensor.status(), qipGadgetInactive);
    EXPECT_EQ(other.log, "-");
}

TEST(qipCommandTest, ADestroyedSensorIsOffEveryCommand)
{
    TestCommand command;
    TestCommand second;
    auto sensor = std::make_unique<LoggingSensor>();
    LoggingSensor stays;
    command.registerServer(sensor.get());
    command.registerServer(sensor.get());
    second.registerServer(sensor.get());
    command.registerServer(&stays);
    sensor.reset();
    LoggingSensor late;
    EXPECT_EQ(second.registerServer(&late), 1);
    EXPECT_EQ(command.registerServer(&late), 2);
    command.disable();
    EXPECT_EQ(stays.log, "-");
}

TEST(qipCommandTest, ARemovedSensorKnowsNothingOfTheCommandsEnd)
{
    LoggingSensor sensor;
    TestCommand second;
    {
        TestCommand command;
        command.registerServer(&sensor);
        second.registerServer(&sensor);
        command.removeServer(&sensor);
    }
    EXPECT_EQ(sensor.log, "");
    EXPECT_EQ(second.removeServer(&sensor), 0);
}

// Deletes another sensor of its command when it is switched off.
class DeletingSensor : public qipSensor
{
public:
    int deactivate() override
    {
        victim.reset();
        return qipSensor::deactivate();
    }
    std::unique_ptr<LoggingSensor> victim = std::make_unique<LoggingSensor>();
};

TEST(qipCommandTest, ASensorMayGoWhileTheCommandGoes)
{
    DeletingSensor sensor;
    LoggingSensor last;
    {
        TestCommand command;
        command.registerServer(&sensor);
        command.registerServer(sensor.victim.get());
        command.registerServer(&last);
    }
    EXPECT_EQ(sensor.victim, nullptr);
    EXPECT_EQ(last.log, "-");
}

TEST(qipCommandTest, AButtonOutlivesItsCommand)
{
    auto command = std::make_unique<TestCommand>();
    qipTCmdBtn::ExecButton unlisted(command.get());
    unlisted.triggered();
    EXPECT_EQ(command->nDone, 1);

    auto shortLived = std::make_unique<TestCommand>();
    TestCommand other;
    const qipTCmdBtn button("button", shortLived.get(), "Button");
    auto* sensor = const_cast<qipButton*>(button.sensor());
    other.registerServer(sensor);
    shortLived.reset();
    EXPECT_EQ(sensor->status(), qipGadgetInactive);
    sensor->triggered(); // of a command that is gone
    EXPECT_EQ(other.nDone, 0);
}

TEST(qipCommandTest, AButtonKeepsItsCommandWhenAnotherOneGoes)
{
    TestCommand command;
    const qipTCmdBtn button("button", &command, "Button");
    auto* sensor = const_cast<qipButton*>(button.sensor());
    {
        TestCommand other;
        other.registerServer(sensor);
    }
    sensor->triggered();
    EXPECT_EQ(command.nDone, 1);
}

TEST(qipCommandTest, SuccessEnablesThenDisables)
{
    TestCommand command;
    TestCommand enabled(1);
    TestCommand disabled;
    TestCommand both;
    EXPECT_EQ(command.inActivationList(&enabled), 1);
    EXPECT_EQ(command.inActivationList(&both), 2);
    EXPECT_EQ(command.inDeactivationList(&disabled), 1);
    EXPECT_EQ(command.inDeactivationList(&both), 2);
    EXPECT_EQ(command.execute(), 0);
    EXPECT_TRUE(enabled.isEnabled());
    EXPECT_FALSE(disabled.isEnabled());
    EXPECT_FALSE(both.isEnabled());
}

TEST(qipCommandTest, FailureLeavesTheListsAlone)
{
    TestCommand command(0, -5);
    TestCommand enabled(1);
    TestCommand disabled;
    command.inActivationList(&enabled);
    command.inDeactivationList(&disabled);
    EXPECT_EQ(command.execute(), -5);
    EXPECT_FALSE(enabled.isEnabled());
    EXPECT_TRUE(disabled.isEnabled());
}

class NamelessCommand : public qipCommand
{
public:
    NamelessCommand() : qipCommand(nullptr) {}
    int doit() override { return 0; }
};

TEST(qipCommandTest, ANamelessCommandIsReportedAndNamed)
{
    StdErr err;
    const NamelessCommand command;
    EXPECT_STREQ(command.name(), "Nameless Command");
    EXPECT_EQ(err.text(), "*** Internal Error: Attempt to construct a nameless Command. "
                          "QCMD:ERR-0001\n");
}

TEST(qipCommandDeathTest, ASensorMustNotBeNull)
{
    TestCommand command;
    EXPECT_DEATH(command.registerServer(nullptr), "qipCommand.cpp.*ifac != 0");
}

TEST(qipCommandTest, ConfirmCommandAsksNothing)
{
    TestConfirmCommand command;
    EXPECT_STREQ(command.question(), "Execute this command?");
    EXPECT_EQ(command.execute(), 0);
    EXPECT_EQ(command.nDone, 1);
    command.setQuestion("Really?");
    EXPECT_STREQ(command.question(), "Really?");
}

TEST(qipCommandTest, AQuestionMayBeItsOwnText)
{
    TestConfirmCommand command;
    command.setQuestion(command.question());
    EXPECT_STREQ(command.question(), "Execute this command?");
    command.setQuestion(command.question() + 8);
    EXPECT_STREQ(command.question(), "this command?");
}

TEST(qipCommandDeathTest, AQuestionMustNotBeNull)
{
    TestConfirmCommand command;
    EXPECT_DEATH(command.setQuestion(nullptr), "qipConfirmCommand.cpp.*_question != 0");
}

TEST(qipCommandTest, TheQuitCommandHasItsQuestion)
{
    const qipQuitCommand quit("quit", 0);
    EXPECT_STREQ(quit.question(), "Do you really want to quit?");
    EXPECT_STREQ(quit.name(), "quit");
    EXPECT_TRUE(quit.isEnabled());
}

TEST(qipCommandDeathTest, TheQuitCommandEndsWithStatusZero)
{
    qipQuitCommand quit("quit", 0);
    EXPECT_EXIT(quit.execute(), ::testing::ExitedWithCode(0), "");
}

TEST(qipCommandTest, ClassNames)
{
    EXPECT_STREQ(TestCommand().className(), "qipCommand");
    EXPECT_STREQ(TestConfirmCommand().className(), "qipConfirmCommand");
    EXPECT_STREQ(qipQuitCommand("q", 0).className(), "qipQuitCommand");
}

} // namespace
