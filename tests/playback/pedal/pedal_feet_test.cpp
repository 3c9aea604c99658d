// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/pedal/pedal_feet.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace ov {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr platform::InputKind kind{0x05f3, 0x00ff};

// Writes down what it is told.
class ToldPlayer final : public PedalledPlayer {
public:
    bool isPedalPlaying() const override { return isPlaying; }
    void pedalPlay() override { tell("play", true); }
    void pedalRest() override { tell("rest", false); }
    std::optional<Place> pedalPlace() const override {
        return isOpen ? std::optional(Place{at, length}) : std::nullopt;
    }
    void pedalPlayFrom(milliseconds place) override {
        tell("from " + std::to_string(place.count()), true);
    }
    void pedalRestAt(milliseconds place) override {
        tell("at " + std::to_string(place.count()), false);
    }
    void pedalDo(PedalAction action, std::int32_t jumpSeconds) override {
        told += "do " + std::to_string(static_cast<int>(action)) + "/" +
                std::to_string(jumpSeconds) + " ";
    }

    std::string take() { return std::exchange(told, {}); }

    bool isOpen = true;
    bool isPlaying = false;
    milliseconds at = 30s;
    milliseconds length = 60s;

private:
    void tell(const std::string& what, bool plays) {
        told += what + " ";
        isPlaying = plays;
    }
    std::string told;
};

class PedalFeetTest : public ::testing::Test {
protected:
    PedalFeetTest() {
        PedalAssignments assignments("7;05f3:00ff 1=3 2=1 3=4 4=2 5=5 6=10 7=1");
        feet.setAssignments(assignments, now);
        feet.obey(&player, now);
    }
    // "+2" goes down, "-2" comes up, "*" is a tick of winding, "x" all come up.
    std::string after(const std::string& steps, milliseconds tick = PedalFeet::windInterval) {
        for (std::size_t i = 0; i < steps.size(); ++i)
            if (steps[i] == '*') {
                now += tick;
                feet.wind(now);
            } else if (steps[i] == 'x') {
                feet.liftAll(now);
            } else {
                const bool down = steps[i] == '+';
                feet.press({1, kind, static_cast<std::uint32_t>(steps[++i] - '0'), down}, now);
            }
        return player.take();
    }

    PedalFeet::Time now{};
    ToldPlayer player;
    PedalFeet feet;
};

TEST_F(PedalFeetTest, DoWhatTheirPedalsAreFor) {
    struct Case {
        const char* what;
        const char* steps;
        bool playsBefore;
        const char* told;
        milliseconds at = 30s;
        milliseconds tick = PedalFeet::windInterval;
    };
    const Case cases[] = {
        {"play while held", "+2-2", false, "play rest "},
        {"two for the same", "+2+7-2-7", false, "play rest "},
        {"down twice without coming up", "+2+2-2", false, "play rest "},
        {"up without having been down", "-2", true, ""},
        {"one that does nothing", "+9-9", true, ""},
        {"once, as it goes down", "+4-4+5-5+6-6", false, "do 2/7 do 5/7 do 10/7 "},
        {"winding back and staying", "+1*-1", false, "from 29000 from 28000 at 28000 "},
        {"winding and going on", "+3-3", true, "from 31000 "},
        {"winding while play is held", "+2+1*-1-2", false, "play from 29000 from 28000 play rest "},
        {"play comes up while it winds", "+2+3-2-3", false, "play from 31000 at 31000 "},
        {"play goes down while it winds", "+3+2-3-2", false, "from 31000 play rest "},
        {"turning round", "+3*+1*-1-3", false,
         "from 31000 from 32000 from 31000 from 30000 from 31000 at 31000 "},
        {"pulled out while playing", "+2x-2", false, "play rest "},
        {"pulled out while winding", "+3x*", false, "from 31000 at 31000 "},
        {"ever faster, but not to the end, where it would be closed", "+3********-3", false,
         "from 31000 from 33000 from 35000 from 39000 from 43000 from 51000 from 59000 at 59000 "
         "at 59000 ",
         30s, 1000ms},
        {"slowly where it turns", "+3**+1x", false,
         "from 21000 from 23000 from 25000 from 24000 at 24000 ", 20s, 1000ms},
        {"not before the start", "+1**-1", false, "from 500 at 0 at 0 ", 1500ms},
        {"going on from the start", "+1**-1", true, "from 500 at 0 from 0 ", 1500ms},
        {"not back from where it was", "+3-3", false, "at 59500 ", 59500ms}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        player.isPlaying = test.playsBefore;
        player.at = test.at;
        EXPECT_EQ(after(test.steps, test.tick), test.told);
        EXPECT_FALSE(feet.isWinding());
    }
}

TEST_F(PedalFeetTest, LeaveAPlayerThatObeysNoMore) {
    const ToldPlayer other;
    feet.forget(other);
    EXPECT_EQ(feet.player(), &player);
    after("+3");
    player.isOpen = false;
    EXPECT_EQ(after("*-3"), "") << "closed while it winds";
    player.isOpen = true;
    after("+3");
    player.length = 20s;
    EXPECT_EQ(after("*-3"), "") << "another one is open";
    after("+3");
    player.length = 40s;
    EXPECT_EQ(after("-3"), "");
    player.isOpen = false;
    EXPECT_EQ(after("+3-3"), "") << "there is nothing to wind";
    EXPECT_EQ(after("+2"), "play ");
    feet.setAssignments(PedalAssignments("7;05f3:00ff 2=9"), now);
    EXPECT_EQ(after("-2+2-2"), "rest do 9/7 ");
}

TEST(PedalAssignments, AreWrittenAndReadAgain) {
    PedalAssignments some;
    EXPECT_EQ(some.text(), "5");
    some.setJumpSeconds(1000);
    some.assign({kind, 65537}, PedalAction::timeStamp);
    some.assign({kind, 30}, PedalAction::windBack);
    some.assign({kind, 30}, PedalAction::playWhileHeld);
    some.assign({{1, 2}, 7}, PedalAction::stop);
    some.setGrabbed(kind, true);
    some.setGrabbed({9, 9}, true);
    EXPECT_EQ(some.text(), "60;0001:0002 7=9;0009:0009!;05f3:00ff! 30=1 65537=10");
    EXPECT_EQ(PedalAssignments(some.text()), some);
    EXPECT_EQ(some.wish(), (platform::InputWish{false, {{1, 2}, kind}, {kind}}));
    some.remove({{1, 2}, 7});
    EXPECT_EQ(some.wish(), (platform::InputWish{false, {kind}, {kind}}))
        << "what has no pedals is not read";
}

TEST(PedalAssignments, LeaveOutWhatMakesNoSense) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "5"},
        {";;;", "5"},
        {"-3", "1"},
        {"x;05f3:00ff 1=1", "5;05f3:00ff 1=1"},
        {"5;05f3:00ff 1=1 2=0 3=11 4=999999999999 x=1 5 =1 6=1x 7=2", "5;05f3:00ff 1=1 7=2"},
        {"5;05f3 1=1;:;12345:1 1=1;zz:1 1=1;a:b 1=1", "5;000a:000b 1=1"},
        {"5;05f3:00ff!! 1=1;05f3:00ff 99999999999=1;05f3:00ff!", "5;05f3:00ff!"},
        {"5;05f3:00ff 1=1 1=2", "5;05f3:00ff 1=2"}};
    for (const auto& [text, read] : cases)
        EXPECT_EQ(PedalAssignments(text).text(), read) << text;
}

} // namespace
} // namespace ov
