#include "preference_sync/SharedSetCodec.h"

#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/Base64.h"
#include "preference_sync/SyncTimestamp.h"
#include "tests/unit/preference_sync/SharedSetArbitrary.h"

namespace lumatile {
namespace {

const SharedSet twoValues{{"__ts", SyncTimestamp::encode(1700000000.5)},
                          {"commands", "[]"},
                          {"oledSettings", std::string("\0\xff{}", 4)}};

// Other computers read it: this form may not change without another format name.
TEST(SharedSetCodec, hasThisForm) {
    EXPECT_EQ(SharedSetCodec::print(twoValues),
              "{\n"
              " \"format\": \"lumatile-settings-1\",\n"
              " \"values\": {\n"
              "  \"__ts\": \"AAAgQPxU2UE=\",\n"
              "  \"commands\": \"W10=\",\n"
              "  \"oledSettings\": \"AP97fQ==\"\n"
              " },\n"
              " \"checkSum\": \"134a9f377002d06a\"\n"
              "}\n");
}

TEST(SharedSetCodec, readsWhatItWrites) {
    for (const SharedSet& set : {SharedSet{}, twoValues, SharedSet{{"commands", ""}}}) {
        const auto text = SharedSetCodec::print(set);
        ASSERT_TRUE(text);
        EXPECT_EQ(SharedSetCodec::parse(*text), set);
    }
}

TEST(SharedSetCodec, refusesAFileThatIsCutOffAnywhere) {
    const std::string text = SharedSetCodec::print(twoValues).value();
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(SharedSetCodec::parse(text.substr(0, length))) << length;
    }
}

TEST(SharedSetCodec, refusesAFileOfWhichABitIsWrong) {
    const std::string text = SharedSetCodec::print(twoValues).value();
    for (std::size_t bit = 0; bit < text.size() * 8; ++bit) {
        std::string damaged = text;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        EXPECT_FALSE(SharedSetCodec::parse(damaged)) << bit;
    }
}

TEST(SharedSetCodec, refusesWhatIsAddedOrSaidTwice) {
    const std::string text = SharedSetCodec::print(twoValues).value();
    EXPECT_FALSE(SharedSetCodec::parse(text + "\n"));
    EXPECT_FALSE(SharedSetCodec::parse(text + text));
    std::string twice = text;
    twice.insert(twice.find("  \"commands\""), "  \"commands\": \"W10=\",\n");
    EXPECT_FALSE(SharedSetCodec::parse(twice));
    EXPECT_FALSE(SharedSetCodec::parse("null"));
    EXPECT_FALSE(SharedSetCodec::parse(R"({"values": []})"));
    EXPECT_FALSE(SharedSetCodec::parse(R"({"values": {"commands": 1}})"));
}

TEST(SharedSetCodec, takesAValueOfAMebibyteAndNoLongerOne) {
    SharedSet set = twoValues;
    set["commands"] = std::string(1'048'576, '\xfe');
    const auto text = SharedSetCodec::print(set);
    ASSERT_TRUE(text);
    EXPECT_EQ(SharedSetCodec::parse(*text), set);
    set["commands"] += ' ';
    EXPECT_FALSE(SharedSetCodec::print(set));
}

TEST(SharedSetCodec, readsTheLargestSetThatItsBoundsAllow) {
    // The longest form of a key escapes every character.
    const auto fullSet = [](std::size_t valueBytes) {
        SharedSet set;
        for (std::size_t index = 0; index < SharedSetCodec::mostKeys; ++index) {
            set[std::string(SharedSetCodec::longestKey - 1, '\\') +
                static_cast<char>('a' + index)] = std::string(valueBytes, '\x01');
        }
        return set;
    };
    constexpr std::size_t someBytes = 1000;
    SharedSet set = fullSet(someBytes);
    const auto text = SharedSetCodec::print(set);
    ASSERT_TRUE(text);
    EXPECT_EQ(SharedSetCodec::parse(*text), set);
    // The longest one differs only in the letters of the values.
    const std::size_t more = (SharedSetCodec::largestValue + 2) / 3 * 4 - (someBytes + 2) / 3 * 4;
    EXPECT_LE(text->size() + SharedSetCodec::mostKeys * more, SharedSetCodec::largestText);
    set["one more"] = "";
    EXPECT_FALSE(SharedSetCodec::print(set));
}

TEST(SharedSetCodec, refusesKeysThatNoVersionHas) {
    for (const std::string& key :
         {std::string(), std::string(65, 'k'), std::string("a b"), std::string("\n"),
          std::string("\xc3\xa4"), std::string("a\0b", 3)}) {
        EXPECT_FALSE(SharedSetCodec::print({{key, "value"}})) << key;
    }
}

// Such a time would win against every change for ever.
TEST(SharedSetCodec, refusesATimeThatNoClockShows) {
    for (const double time :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), 1e300, -1e300}) {
        EXPECT_FALSE(SharedSetCodec::print({{"__ts", SyncTimestamp::encode(time)}})) << time;
    }
    // One of another length reads as none.
    EXPECT_TRUE(SharedSetCodec::print({{"__ts", "1234"}}));
}

RC_GTEST_PROP(SharedSetCodec, everySetComesBack, ()) {
    const SharedSet set = arbitrarySharedSet();
    const auto text = SharedSetCodec::print(set);
    RC_ASSERT(text.has_value());
    RC_ASSERT(SharedSetCodec::parse(*text) == set);
}

RC_GTEST_PROP(SharedSetCodec, neverReadsADamagedSet, ()) {
    const std::string text = SharedSetCodec::print(arbitrarySharedSet()).value();
    std::string damaged = text;
    const auto place = *rc::gen::inRange<std::size_t>(0, text.size());
    switch (*rc::gen::inRange(0, 3)) {
        case 0:
            damaged[place] = *rc::gen::arbitrary<char>();
            break;
        case 1:
            damaged.erase(place, *rc::gen::inRange<std::size_t>(1, 9));
            break;
        default:
            damaged.insert(place, *rc::gen::nonEmpty(rc::gen::arbitrary<std::string>()));
            break;
    }
    RC_PRE(damaged != text);
    RC_ASSERT(!SharedSetCodec::parse(damaged));
}

TEST(Base64, isAsEverywhere) {
    EXPECT_EQ(Base64::encode(""), "");
    EXPECT_EQ(Base64::encode("f"), "Zg==");
    EXPECT_EQ(Base64::encode("fo"), "Zm8=");
    EXPECT_EQ(Base64::encode("foo"), "Zm9v");
    EXPECT_EQ(Base64::encode("foob"), "Zm9vYg==");
    EXPECT_EQ(Base64::encode("\xfb\xff"), "+/8=");
}

TEST(Base64, refusesWhatItDoesNotWrite) {
    for (const char* text : {"Z", "Zg", "Zg=", "Zh==", "Zm9=", "====", "Zg==Zg==", "Zg= =",
                             "Zm9v\n", "Zm-v", "=Zm9", "Z==="}) {
        EXPECT_FALSE(Base64::decode(text)) << text;
    }
}

RC_GTEST_PROP(Base64, everythingComesBack, (const std::string& bytes)) {
    RC_ASSERT(Base64::decode(Base64::encode(bytes)) == bytes);
}

}  // namespace
}  // namespace lumatile
