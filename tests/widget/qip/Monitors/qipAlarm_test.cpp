#include "tests/support/gtest_x.h"

#include "qip/Monitors/qipBasicAlarm_X.h"
#include "qip/Monitors/qipTimeout.h"
#include "tests/support/XtFixture.h"

#include <chrono>

namespace {

class CountingTimeout : public qipTimeout
{
public:
    void triggered() override { ++nTriggered; }
    int nTriggered = 0;
};

class qipAlarmTest : public XtFixture
{
protected:
    using Clock = std::chrono::system_clock; // the one that the toolkit's timers look at

    // Handles events for a while; how long it really takes is the machine's business.
    void handleEventsFor(int milliseconds)
    {
        const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
        waitFor([&] { return Clock::now() >= end; });
    }
};

TEST_F(qipAlarmTest, FiresOnceForEachActivation)
{
    CountingTimeout timeout;
    timeout.setTimer(20);
    EXPECT_EQ(timeout.activate(), 0);
    EXPECT_EQ(timeout.status(), qipGadgetActive);
    ASSERT_TRUE(waitFor([&] { return timeout.nTriggered == 1; }));
    handleEventsFor(60);
    EXPECT_EQ(timeout.nTriggered, 1);
    timeout.deactivate();
    timeout.activate();
    EXPECT_TRUE(waitFor([&] { return timeout.nTriggered == 2; }));
}

TEST_F(qipAlarmTest, AnIntervalOfZeroDisablesIt)
{
    CountingTimeout timeout;
    timeout.setTimer(0);
    EXPECT_EQ(timeout.activate(), 0);
    handleEventsFor(30);
    EXPECT_EQ(timeout.nTriggered, 0);
    EXPECT_EQ(timeout.deactivate(), 0);
}

TEST_F(qipAlarmTest, DeactivatingStopsIt)
{
    CountingTimeout timeout;
    timeout.setTimer(30);
    timeout.activate();
    EXPECT_EQ(timeout.deactivate(), 0);
    EXPECT_EQ(timeout.status(), qipGadgetInactive);
    handleEventsFor(80);
    EXPECT_EQ(timeout.nTriggered, 0);
    EXPECT_EQ(timeout.deactivate(), -1);
}

TEST_F(qipAlarmTest, ActivatedAgainItCountsFromThen)
{
    CountingTimeout timeout;
    timeout.setTimer(200);
    timeout.activate();
    handleEventsFor(100);
    timeout.deactivate();
    // On a busy machine it has fired by now.
    timeout.nTriggered = 0;
    const auto start = Clock::now();
    timeout.activate();
    ASSERT_TRUE(waitFor([&] { return timeout.nTriggered == 1; }));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(195));
}

TEST_F(qipAlarmTest, ADeactivateAfterTheExpiryTakesNobodyElsesTimeOut)
{
    CountingTimeout fired;
    fired.setTimer(10);
    fired.activate();
    ASSERT_TRUE(waitFor([&] { return fired.nTriggered == 1; }));
    // The toolkit gives the fired one's id to the next.
    CountingTimeout other;
    other.setTimer(30);
    other.activate();
    EXPECT_EQ(fired.deactivate(), 0);
    EXPECT_TRUE(waitFor([&] { return other.nTriggered == 1; }));
}

TEST_F(qipAlarmTest, ADestroyedAlarmDoesNotFire)
{
    {
        CountingTimeout timeout;
        timeout.setTimer(10);
        timeout.activate();
    }
    handleEventsFor(40);
}

TEST_F(qipAlarmTest, TheEngineRefusesZeroMilliseconds)
{
    CountingTimeout timeout;
    qipBasicAlarm_X engine(&timeout);
    EXPECT_EQ(engine.set(0), -1);
    EXPECT_EQ(engine.deactivate(), -1);
}

TEST_F(qipAlarmTest, SettingTheIntervalStartsNothing)
{
    CountingTimeout timeout;
    timeout.setTimer(10);
    handleEventsFor(40);
    EXPECT_EQ(timeout.nTriggered, 0);
    EXPECT_EQ(timeout.interval(), 10u);
}

TEST_F(qipAlarmTest, AGadgetIsActiveAtOnce)
{
    qipGadget gadget;
    EXPECT_EQ(gadget.deactivate(), 0);
    EXPECT_EQ(gadget.activate(), 0);
}

TEST_F(qipAlarmTest, ClassNames)
{
    EXPECT_STREQ(CountingTimeout().className(), "qipTimeout");
    EXPECT_STREQ(qipGadget().className(), "qipGadget");
    EXPECT_STREQ(qipSensor().className(), "qipSensor");
}

} // namespace
