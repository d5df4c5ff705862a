#include "oled_protection/OLEDSettingsCodec.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

using OLEDSettingsCodec::decode;
using OLEDSettingsCodec::encode;

OLEDSettings unusual() {
    OLEDSettings settings;
    settings.orbitEnabled = false;
    settings.orbitAmplitude = 2.5;
    settings.orbitStepInterval = 0.5;
    settings.orbitWaitForPause = false;
    settings.jitterEnabled = false;
    settings.jitterTolerance = 1.0 / 3;
    settings.idleDimEnabled = false;
    settings.idleThreshold = 61.5;
    settings.idleDimStrength = 0.1 + 0.2;
    return settings;
}

const std::vector<std::string> switches{"orbitEnabled", "orbitWaitForPause", "jitterEnabled",
                                        "idleDimEnabled"};
const std::vector<std::string> quantities{"orbitAmplitude", "orbitStepInterval", "jitterTolerance",
                                          "idleThreshold", "idleDimStrength"};

std::string object(const std::string& key, const std::string& value) {
    return "{\"" + key + "\":" + value + "}";
}

TEST(OLEDSettingsCodec, anEmptyObjectIsExactlyRecommended) {
    EXPECT_EQ(decode("{}"), OLEDSettings::recommended);
    EXPECT_EQ(decode(" {\n} "), OLEDSettings::recommended);
}

TEST(OLEDSettingsCodec, writesAllNineKeysInFieldOrder) {
    EXPECT_EQ(encode(OLEDSettings::recommended),
              R"({"orbitEnabled":true,"orbitAmplitude":2.0,"orbitStepInterval":300.0,)"
              R"("orbitWaitForPause":true,"jitterEnabled":true,"jitterTolerance":3.0,)"
              R"("idleDimEnabled":true,"idleThreshold":300.0,"idleDimStrength":0.3})");
}

TEST(OLEDSettingsCodec, readsWhatItWrote) {
    EXPECT_EQ(decode(encode(OLEDSettings::recommended)), OLEDSettings::recommended);
    EXPECT_EQ(decode(encode(unusual())), unusual());
}

TEST(OLEDSettingsCodec, eachAbsentKeyTakesItsRecommendedValue) {
    EXPECT_EQ(decode(R"({"orbitEnabled":false,"orbitAmplitude":2.5,"orbitStepInterval":0.5,)"
                     R"("orbitWaitForPause":false,"jitterEnabled":false,"jitterTolerance":4,)"
                     R"("idleDimEnabled":false,"idleThreshold":61.5})")
                  .value_or(OLEDSettings{})
                  .idleDimStrength,
              0.3);
    OLEDSettings expected;
    expected.jitterTolerance = 5;
    EXPECT_EQ(decode(R"({"jitterTolerance":5})"), expected);
}

TEST(OLEDSettingsCodec, aKeyWithoutAValueCountsAsAbsent) {
    for (const std::vector<std::string>& keys : {switches, quantities}) {
        for (const std::string& key : keys) {
            EXPECT_EQ(decode(object(key, "null")), OLEDSettings::recommended) << key;
        }
    }
}

TEST(OLEDSettingsCodec, unknownKeysAreIgnored) {
    EXPECT_EQ(decode(R"({"later":{"deep":[1,2,{"x":null}]},"orbitamplitude":"x"})"),
              OLEDSettings::recommended);
}

TEST(OLEDSettingsCodec, integersAreFineWhereNumbersBelong) {
    OLEDSettings expected;
    expected.orbitAmplitude = 4;
    expected.idleThreshold = 60;
    expected.idleDimStrength = 1;
    EXPECT_EQ(decode(R"({"orbitAmplitude":4,"idleThreshold":6e1,"idleDimStrength":1})"), expected);
}

TEST(OLEDSettingsCodec, aSwitchOfAnotherTypeMakesAllUnreadable) {
    for (const std::string& key : switches) {
        for (const char* value : {"0", "1", "1.0", "\"true\"", "[]", "{}", "[true]"}) {
            EXPECT_EQ(decode(object(key, value)), std::nullopt) << key << " " << value;
        }
    }
}

TEST(OLEDSettingsCodec, aNumberOfAnotherTypeMakesAllUnreadable) {
    for (const std::string& key : quantities) {
        for (const char* value : {"true", "false", "\"2\"", "[]", "{}", "[2]"}) {
            EXPECT_EQ(decode(object(key, value)), std::nullopt) << key << " " << value;
        }
    }
}

TEST(OLEDSettingsCodec, oneWrongKeyDiscardsTheRightOnesAsWell) {
    EXPECT_EQ(decode(R"({"orbitAmplitude":4,"jitterEnabled":1})"), std::nullopt);
    EXPECT_EQ(decode(R"({"jitterEnabled":1,"orbitAmplitude":4})"), std::nullopt);
}

TEST(OLEDSettingsCodec, numbersThatAreNotFiniteMakeAllUnreadable) {
    for (const std::string& key : quantities) {
        for (const char* value : {"1e999", "-1e999", "NaN", "Infinity", "-Infinity"}) {
            EXPECT_EQ(decode(object(key, value)), std::nullopt) << key << " " << value;
        }
    }
}

TEST(OLEDSettingsCodec, numbersBeyondIntegersMakeAllUnreadable) {
    for (const std::string& key : quantities) {
        for (const char* value : {"1e19", "-1e19", "9223372036854775808", "1e308", "-1e308"}) {
            EXPECT_EQ(decode(object(key, value)), std::nullopt) << key << " " << value;
        }
    }
    // As a percentage this one is.
    EXPECT_EQ(decode(R"({"idleDimStrength":1e17})"), std::nullopt);
    EXPECT_TRUE(decode(R"({"idleDimStrength":9e16})").has_value());
    EXPECT_TRUE(decode(R"({"idleThreshold":9e18,"orbitStepInterval":-9e18})").has_value());
}

TEST(OLEDSettingsCodec, distancesOverTenThousandPixelsMakeAllUnreadable) {
    for (const char* key : {"orbitAmplitude", "jitterTolerance"}) {
        EXPECT_TRUE(decode(object(key, "10000")).has_value()) << key;
        EXPECT_TRUE(decode(object(key, "-10000")).has_value()) << key;
        EXPECT_EQ(decode(object(key, "10000.001")), std::nullopt) << key;
        EXPECT_EQ(decode(object(key, "-10000.001")), std::nullopt) << key;
        EXPECT_EQ(decode(object(key, "1e18")), std::nullopt) << key;
    }
}

TEST(OLEDSettingsCodec, whatIsNoObjectIsUnreadable) {
    for (const char* text :
         {"", " ", "null", "true", "1", "\"{}\"", "[]", "[{}]", "{", "{}{}", "{},", "{\"a\"}",
          "{'orbitEnabled':true}", "{\"orbitEnabled\":true,}", "\xFF\xFE", "{\"\xC3\x28\":1}"}) {
        EXPECT_EQ(decode(text), std::nullopt) << text;
    }
    EXPECT_EQ(decode(std::string_view("{}\0", 3)), std::nullopt);
}

TEST(OLEDSettingsCodec, theSameKeyTwiceIsUnreadable) {
    EXPECT_EQ(decode(R"({"orbitAmplitude":1,"orbitAmplitude":2})"), std::nullopt);
}

TEST(OLEDSettingsCodec, absurdlyLargeTextIsUnreadable) {
    EXPECT_EQ(decode(std::string(100'000, ' ') + "{}"), std::nullopt);
    EXPECT_EQ(decode(object("later", std::string(1'000, '[') + std::string(1'000, ']'))),
              std::nullopt);
    EXPECT_EQ(decode(object("later", "\"" + std::string(10'000, 'x') + "\"")), std::nullopt);
}

TEST(OLEDSettingsCodec, whatHasNoJSONFormIsWrittenAsNullAndReadAsRecommended) {
    OLEDSettings settings = unusual();
    settings.orbitAmplitude = std::numeric_limits<double>::quiet_NaN();
    settings.idleThreshold = std::numeric_limits<double>::infinity();
    OLEDSettings expected = unusual();
    expected.orbitAmplitude = OLEDSettings::recommended.orbitAmplitude;
    expected.idleThreshold = OLEDSettings::recommended.idleThreshold;
    EXPECT_EQ(decode(encode(settings)), expected);
}

RC_GTEST_PROP(OLEDSettingsCodec, roundTripKeepsEveryStorableValue, ()) {
    const auto below = [](double bound) { return std::fmod(*rc::gen::arbitrary<double>(), bound); };
    OLEDSettings settings;
    settings.orbitEnabled = *rc::gen::arbitrary<bool>();
    settings.orbitAmplitude = below(10'000);
    settings.orbitStepInterval = below(9e18);
    settings.orbitWaitForPause = *rc::gen::arbitrary<bool>();
    settings.jitterEnabled = *rc::gen::arbitrary<bool>();
    settings.jitterTolerance = below(10'000);
    settings.idleDimEnabled = *rc::gen::arbitrary<bool>();
    settings.idleThreshold = below(9e18);
    settings.idleDimStrength = below(9e16);
    RC_ASSERT(decode(encode(settings)) == settings);
}

RC_GTEST_PROP(OLEDSettingsCodec, cutTextIsUnreadable, ()) {
    const std::string text = encode(unusual());
    RC_ASSERT(decode(text.substr(0, *rc::gen::inRange<std::size_t>(0, text.size()))) ==
              std::nullopt);
}

RC_GTEST_PROP(OLEDSettingsCodec, whateverIsReadGivesAPathThatFitsMemory, ()) {
    // A damaged text: some characters replaced by others that JSON uses.
    std::string text = encode(unusual());
    const int damages = *rc::gen::inRange(0, 4);
    for (int i = 0; i < damages; ++i) {
        text[*rc::gen::inRange<std::size_t>(0, text.size())] =
            *rc::gen::elementOf(std::string("0123456789eE+-.,:\"{}[]tfn "));
    }
    if (const std::optional<OLEDSettings> settings = decode(text)) {
        RC_ASSERT(settings->orbitConfig(false).radiusPx >= 1);
        RC_ASSERT(settings->orbitConfig(false).radiusPx <= OrbitConfig::maximumRadiusPx);
        RC_ASSERT(settings->orbitInterval(false) >= 1);
        RC_ASSERT(std::abs(settings->jitterTolerance) <= 10'000);
    }
}

}  // namespace
}  // namespace lumatile
