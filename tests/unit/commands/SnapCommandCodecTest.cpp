#include "commands/SnapCommandCodec.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/BoundedJSON.h"
#include "commands/BuiltInCommands.h"
#include "tests/support/SnapCommandArbitrary.h"

namespace lumatile {
namespace {

/// The members of one well-formed command, as texts, to be changed one at a time.
class CommandText {
public:
    CommandText& set(const std::string& key, const std::string& value) {
        for (auto& member : members_) {
            if (member.first == key) {
                member.second = value;
                return *this;
            }
        }
        members_.emplace_back(key, value);
        return *this;
    }

    CommandText& remove(const std::string& key) {
        std::erase_if(members_, [&key](const auto& member) { return member.first == key; });
        return *this;
    }

    std::string object() const {
        std::string text;
        for (const auto& [key, value] : members_) {
            text.append(text.empty() ? "{\"" : ",\"").append(key).append("\":").append(value);
        }
        return text + "}";
    }

    std::string list() const { return "[" + object() + "]"; }

private:
    std::vector<std::pair<std::string, std::string>> members_{
        {"id", R"("01234567-89AB-4DEF-8123-456789ABCDEF")"},
        {"nameKey", R"("command.left")"},
        {"axis", R"("horizontal")"},
        {"kind", R"("area")"},
        {"targetSegments", "[[0,0,12,12]]"},
        {"activationSegments", "[[0,1,1,10]]"},
        {"shortcut", R"({"carbonKeyCode":123,"carbonModifiers":6144,"enabled":true})"},
        {"visibleInMenuBar", "true"},
        {"visibleInGreenButtonMenu", "false"},
        {"group", R"("halves")"},
        {"customName", R"("Mine")"},
    };
};

std::optional<std::vector<SnapCommand>> decode(std::string_view text) {
    return SnapCommandCodec::decodeList(text);
}

SnapCommand only(const CommandText& text) {
    const auto list = decode(text.list());
    if (!list || list->size() != 1) {
        ADD_FAILURE() << "unreadable: " << text.list();
        return {};
    }
    return list->front();
}

std::string keysOf(const std::string& text) {
    // The keys of one object in the order of the text, its nested objects left out.
    std::string keys;
    std::size_t depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{') {
            ++depth;
        } else if (text[i] == '}') {
            --depth;
        } else if (text[i] == '"') {
            const std::size_t end = text.find('"', i + 1);
            if (depth == 1 && text[end + 1] == ':') {
                keys += text.substr(i + 1, end - i - 1) + " ";
            }
            i = end;
        }
    }
    return keys;
}

const std::vector<std::string> requiredKeys{
    "id",
    "nameKey",
    "axis",
    "kind",
    "targetSegments",
    "activationSegments",
    "visibleInMenuBar",
    "visibleInGreenButtonMenu",
};
const std::vector<std::string> optionalKeys{"shortcut", "group", "customName"};

TEST(SnapCommandDecoding, readsEveryField) {
    const SnapCommand command = only(CommandText());
    EXPECT_EQ(command.id.text(), "01234567-89AB-4DEF-8123-456789ABCDEF");
    EXPECT_EQ(command.nameKey, "command.left");
    EXPECT_EQ(command.axis, Axis::horizontal);
    EXPECT_EQ(command.kind, Kind::area);
    EXPECT_EQ(command.targetSegments, (std::vector<Segment>{{0, 0, 12, 12}}));
    EXPECT_EQ(command.activationSegments, (std::vector<Segment>{{0, 1, 1, 10}}));
    EXPECT_EQ(command.shortcut, (Shortcut{123, 6144, true}));
    EXPECT_TRUE(command.visibleInMenuBar);
    EXPECT_FALSE(command.visibleInGreenButtonMenu);
    EXPECT_EQ(command.group, "halves");
    EXPECT_EQ(command.customName, "Mine");
}

TEST(SnapCommandDecoding, readsAnIdOfEitherCase) {
    EXPECT_EQ(only(CommandText().set("id", R"("01234567-89ab-4def-8123-456789abcdef")")).id,
              only(CommandText()).id);
}

TEST(SnapCommandDecoding, optionalFieldsMayBeMissingOrNull) {
    for (const std::string& key : optionalKeys) {
        SnapCommand expected = only(CommandText());
        if (key == "shortcut") {
            expected.shortcut.reset();
        } else {
            (key == "group" ? expected.group : expected.customName).reset();
        }
        EXPECT_EQ(only(CommandText().remove(key)), expected) << key;
        EXPECT_EQ(only(CommandText().set(key, "null")), expected) << key;
    }
}

TEST(SnapCommandDecoding, anEmptyTextIsNotAnAbsentOne) {
    EXPECT_EQ(only(CommandText().set("group", R"("")")).group, "");
    EXPECT_EQ(only(CommandText().set("customName", R"("")")).customName, "");
}

TEST(SnapCommandDecoding, requiredFieldsMayBeNeitherMissingNorNull) {
    for (const std::string& key : requiredKeys) {
        EXPECT_FALSE(decode(CommandText().remove(key).list())) << key;
        EXPECT_FALSE(decode(CommandText().set(key, "null").list())) << key;
    }
}

TEST(SnapCommandDecoding, aShortcutNeedsAllItsFields) {
    const std::vector<std::string> malformed{
        R"({})",
        R"({"carbonModifiers":6144,"enabled":true})",
        R"({"carbonKeyCode":123,"enabled":true})",
        R"({"carbonKeyCode":123,"carbonModifiers":6144})",
        R"({"carbonKeyCode":null,"carbonModifiers":6144,"enabled":true})",
        R"({"carbonKeyCode":123,"carbonModifiers":null,"enabled":true})",
        R"({"carbonKeyCode":123,"carbonModifiers":6144,"enabled":null})",
    };
    for (const std::string& shortcut : malformed) {
        EXPECT_FALSE(decode(CommandText().set("shortcut", shortcut).list())) << shortcut;
    }
}

TEST(SnapCommandDecoding, unknownKeysAreIgnored) {
    const std::vector<std::string> values{
        "null", "1", "\"text\"", "true", "[[[{\"a\":[]}]]]", "{\"kind\":\"maximize\"}"};
    for (const std::string& value : values) {
        EXPECT_EQ(only(CommandText().set("later", value)), only(CommandText())) << value;
        EXPECT_EQ(only(CommandText().set("Kind", value)), only(CommandText())) << value;
        EXPECT_EQ(only(CommandText().set(
                      "shortcut",
                      R"({"carbonKeyCode":123,"carbonModifiers":6144,"enabled":true,"later":)" +
                          value + "}")),
                  only(CommandText()))
            << value;
    }
}

TEST(SnapCommandDecoding, theOrderOfKeysAndTheWhiteSpaceDoNotMatter) {
    EXPECT_EQ(decode(" [ {\n\t\"kind\" : \"center\" , \"id\":"
                     "\"01234567-89AB-4DEF-8123-456789ABCDEF\",\"nameKey\":\"\",\"axis\":"
                     "\"vertical\",\"activationSegments\":[ ],\"targetSegments\":[[ ]],"
                     "\"visibleInGreenButtonMenu\":true,\"visibleInMenuBar\":false } ]\n")
                  .value()
                  .size(),
              1U);
}

TEST(SnapCommandDecoding, everyKindAndAxisIsReadAndNothingElse) {
    for (const std::string_view kind : kindRawValues) {
        const std::string text = "\"" + std::string(kind) + "\"";
        EXPECT_EQ(rawValue(only(CommandText().set("kind", text)).kind), kind);
    }
    EXPECT_EQ(only(CommandText().set("axis", "\"vertical\"")).axis, Axis::vertical);
    for (const std::string text : {R"("maximize")", R"("Area")", R"("")", "0", "[\"area\"]"}) {
        EXPECT_FALSE(decode(CommandText().set("kind", text).list())) << text;
        EXPECT_FALSE(decode(CommandText().set("axis", text).list())) << text;
    }
}

TEST(SnapCommandDecoding, oneMalformedCommandMakesTheListUnreadable) {
    const std::string good = CommandText().object();
    const std::string bad = CommandText().set("kind", R"("maximize")").object();
    ASSERT_TRUE(decode("[" + good + "," + good + "]"));
    EXPECT_FALSE(decode("[" + bad + "," + good + "]"));
    EXPECT_FALSE(decode("[" + good + "," + bad + "]"));
    EXPECT_FALSE(decode("[" + good + "," + bad + "," + good + "]"));
    for (const std::string element : {"null", "1", "[]", "{}", "\"\"", "true"}) {
        EXPECT_FALSE(decode(std::string("[").append(good).append(",").append(element).append("]")))
            << element;
    }
}

TEST(SnapCommandDecoding, valuesOfAnotherTypeAreRefused) {
    struct Case {
        std::string key;
        std::vector<std::string> values;
    };
    const std::vector<Case> cases{
        {"id", {"1", "true", R"("")", R"("0123456789AB4DEF8123456789ABCDEF")", "[]"}},
        {"nameKey", {"1", "true", "[]", "{}"}},
        {"targetSegments", {"{}", "\"[]\"", "0", "true", "[0,0,12,12]", "[null]", "[{}]"}},
        {"activationSegments", {"{}", "\"[]\"", "0", "true", "[0,0,12,12]", "[null]", "[{}]"}},
        {"shortcut", {"1", "true", "false", "[]", "\"\""}},
        {"visibleInMenuBar", {"0", "1", "1.0", R"("true")", "[]", "{}"}},
        {"visibleInGreenButtonMenu", {"0", "1", "1.0", R"("true")", "[]", "{}"}},
        {"group", {"0", "true", "[]", "{}"}},
        {"customName", {"0", "true", "[]", "{}"}},
    };
    for (const auto& [key, values] : cases) {
        for (const std::string& value : values) {
            EXPECT_FALSE(decode(CommandText().set(key, value).list())) << key << " " << value;
        }
    }
}

TEST(SnapCommandDecoding, segmentsTakeWholeNumbersOfSixtyFourBitsAlone) {
    for (const std::string key : {"targetSegments", "activationSegments"}) {
        for (const std::string number :
             {"true", "false", "null", "\"1\"", "0.5", "1.0000000001", "9223372036854775808",
              "-9223372036854775809", "1e19", "1e400", "[]"}) {
            EXPECT_FALSE(decode(CommandText().set(key, "[[0,0,1," + number + "]]").list()))
                << key << " " << number;
        }
    }
    EXPECT_EQ(only(CommandText().set("targetSegments",
                                     "[[-9223372036854775808,9223372036854775807,12.0,1e1]]"))
                  .targetSegments,
              (std::vector<Segment>{{INT64_MIN, INT64_MAX, 12, 10}}));
}

TEST(SnapCommandDecoding, segmentsOfAnyLengthAreKept) {
    EXPECT_EQ(only(CommandText().set("targetSegments", "[[],[1,2,3],[1,2,3,4,5]]")).targetSegments,
              (std::vector<Segment>{{}, {1, 2, 3}, {1, 2, 3, 4, 5}}));
}

TEST(SnapCommandDecoding, shortcutsTakeWholeNumbersOfThirtyTwoBitsAlone) {
    const auto withNumber = [](const std::string& key, const std::string& number) {
        const bool isCode = key == "carbonKeyCode";
        return CommandText().set("shortcut", "{\"carbonKeyCode\":" + (isCode ? number : "123") +
                                                 ",\"carbonModifiers\":" +
                                                 (isCode ? "6144" : number) + ",\"enabled\":true}");
    };
    for (const std::string key : {"carbonKeyCode", "carbonModifiers"}) {
        for (const std::string number : {"true", "false", "\"1\"", "-1", "0.5", "4294967296",
                                         "18446744073709551616", "1e10", "[]", "{}"}) {
            EXPECT_FALSE(decode(withNumber(key, number).list())) << key << " " << number;
        }
        EXPECT_TRUE(decode(withNumber(key, "4294967295").list())) << key;
        EXPECT_TRUE(decode(withNumber(key, "0").list())) << key;
    }
    EXPECT_EQ(only(withNumber("carbonKeyCode", "4294967295")).shortcut,
              (Shortcut{4294967295, 6144, true}));
    for (const std::string enabled : {"0", "1", "\"true\"", "[]"}) {
        EXPECT_FALSE(
            decode(CommandText()
                       .set("shortcut",
                            R"({"carbonKeyCode":1,"carbonModifiers":2,"enabled":)" + enabled + "}")
                       .list()))
            << enabled;
    }
}

TEST(SnapCommandDecoding, whatIsNoListIsRefused) {
    const std::string object = CommandText().object();
    for (const std::string& text :
         {std::string(), std::string("null"), std::string("{}"), std::string("1"),
          std::string("\"[]\""), object, "{\"commands\":[" + object + "]}", "[[" + object + "]]",
          "[" + object, "[" + object + ",]", "[" + object + "] x"}) {
        EXPECT_FALSE(decode(text)) << text;
    }
    EXPECT_EQ(decode("[]"), std::vector<SnapCommand>{});
}

TEST(SnapCommandDecoding, aKeyThatOccursTwiceIsRefused) {
    const std::string object = CommandText().object();
    const std::string members = object.substr(1, object.size() - 2);
    ASSERT_TRUE(decode("[{" + members + "}]"));
    const std::vector<std::string> repeated{R"("kind":"area")", R"("visibleInMenuBar":true)",
                                            R"("targetSegments":[[0,0,12,12]])", R"("group":null)"};
    for (const std::string& member : repeated) {
        EXPECT_FALSE(decode(std::string("[{").append(members).append(",").append(member) + "}]"))
            << member;
    }
    EXPECT_FALSE(decode("[{" + members + ",\"later\":1,\"later\":1}]"));
}

TEST(SnapCommandDecoding, textThatIsNotUTF8IsRefused) {
    EXPECT_FALSE(decode(CommandText().set("customName", "\"\x80\"").list()));
    EXPECT_FALSE(decode(CommandText().set("customName", "\"\xED\xA0\x80\"").list()));
    EXPECT_FALSE(decode(CommandText().set("nameKey", R"("\ud800")").list()));
    EXPECT_FALSE(decode(CommandText().set("later", "\"\xFF\"").list()));
}

TEST(SnapCommandDecoding, deepNestingIsRefusedEvenUnderAnUnknownKey) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_TRUE(decode(CommandText().set("later", nested(30)).list()));
    EXPECT_FALSE(decode(CommandText().set("later", nested(31)).list()));
    EXPECT_FALSE(decode(CommandText().set("later", nested(1'000'000)).list()));
    EXPECT_FALSE(decode(std::string(1'000'000, '[')));
}

TEST(SnapCommandDecoding, longStringsAreRefused) {
    const std::string longest(SnapCommandCodec::maxStringBytes, 'x');
    for (const std::string key : {"nameKey", "group", "customName", "later"}) {
        EXPECT_TRUE(decode(CommandText().set(key, "\"" + longest + "\"").list())) << key;
        EXPECT_FALSE(decode(CommandText().set(key, "\"" + longest + "x\"").list())) << key;
    }
    EXPECT_FALSE(decode(CommandText().set(longest + "x", "1").list()));
}

TEST(SnapCommandDecoding, aListOfMoreThanTwoThousandCommandsIsRefused) {
    const std::string object = CommandText().object();
    std::string objects;
    for (std::size_t i = 0; i < 2000; ++i) {
        objects += object + ",";
    }
    const auto longest = decode("[" + objects.substr(0, objects.size() - 1) + "]");
    ASSERT_TRUE(longest);
    EXPECT_EQ(longest->size(), 2000U);
    EXPECT_FALSE(decode("[" + objects + object + "]"));
}

TEST(SnapCommandDecoding, aTextOfMoreThanThreeMebibytesIsRefused) {
    std::string text = CommandText().list();
    text.append(3'145'728 - text.size(), ' ');
    EXPECT_TRUE(decode(text));
    text += ' ';
    EXPECT_FALSE(decode(text));
}

TEST(SnapCommandDecoding, aTextFullOfTinyValuesIsRefused) {
    std::string segments = "[";
    for (int i = 0; i < 200'000; ++i) {
        segments += "[],";
    }
    segments.back() = ']';
    EXPECT_FALSE(decode(CommandText().set("targetSegments", segments).list()));
}

TEST(SnapCommandEncoding, writesTheFieldsInOrder) {
    EXPECT_EQ(SnapCommandCodec::encodeList({only(CommandText())}, KeyOrder::field),
              R"([{"id":"01234567-89AB-4DEF-8123-456789ABCDEF","nameKey":"command.left",)"
              R"("axis":"horizontal","kind":"area","targetSegments":[[0,0,12,12]],)"
              R"("activationSegments":[[0,1,1,10]],)"
              R"("shortcut":{"carbonKeyCode":123,"carbonModifiers":6144,"enabled":true},)"
              R"("visibleInMenuBar":true,"visibleInGreenButtonMenu":false,"group":"halves",)"
              R"("customName":"Mine"}])");
}

TEST(SnapCommandEncoding, writesTheKeysSorted) {
    EXPECT_EQ(SnapCommandCodec::encodeList({only(CommandText())}, KeyOrder::sorted),
              R"([{"activationSegments":[[0,1,1,10]],"axis":"horizontal","customName":"Mine",)"
              R"("group":"halves","id":"01234567-89AB-4DEF-8123-456789ABCDEF","kind":"area",)"
              R"("nameKey":"command.left",)"
              R"("shortcut":{"carbonKeyCode":123,"carbonModifiers":6144,"enabled":true},)"
              R"("targetSegments":[[0,0,12,12]],"visibleInGreenButtonMenu":false,)"
              R"("visibleInMenuBar":true}])");
}

TEST(SnapCommandEncoding, leavesAbsentFieldsOut) {
    SnapCommand command = only(CommandText());
    command.shortcut.reset();
    command.group.reset();
    command.customName.reset();
    EXPECT_EQ(keysOf(SnapCommandCodec::encodeList({command}, KeyOrder::field)),
              "id nameKey axis kind targetSegments activationSegments visibleInMenuBar "
              "visibleInGreenButtonMenu ");
    EXPECT_EQ(keysOf(SnapCommandCodec::encodeList({command}, KeyOrder::sorted)),
              "activationSegments axis id kind nameKey targetSegments visibleInGreenButtonMenu "
              "visibleInMenuBar ");
}

TEST(SnapCommandEncoding, writesAnEmptyListAsOne) {
    for (const KeyOrder order : {KeyOrder::field, KeyOrder::sorted}) {
        EXPECT_EQ(SnapCommandCodec::encodeList({}, order), "[]");
    }
}

TEST(SnapCommandEncoding, prettyIsTheSameListOnManyLines) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    const std::string pretty =
        SnapCommandCodec::encodeList(commands, KeyOrder::sorted, JSONLayout::pretty);
    EXPECT_GT(std::count(pretty.begin(), pretty.end(), '\n'), 34 * 11);
    EXPECT_EQ(decode(pretty), commands);
}

TEST(SnapCommandEncoding, bytesThatAreNotUTF8BecomeReplacementCharacters) {
    SnapCommand command = only(CommandText());
    command.customName = "a\xFFz";
    const auto decoded = decode(SnapCommandCodec::encodeList({command}, KeyOrder::sorted));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->front().customName, "a\uFFFDz");
}

TEST(SnapCommandCodec, theBuiltInCommandsAreReadBack) {
    const std::vector<SnapCommand> commands = BuiltInCommands::defaults();
    for (const KeyOrder order : {KeyOrder::field, KeyOrder::sorted}) {
        EXPECT_EQ(decode(SnapCommandCodec::encodeList(commands, order)), commands);
    }
}

RC_GTEST_PROP(SnapCommandCodec, everyListIsReadBackFromEveryForm, ()) {
    const std::vector<SnapCommand> commands = arbitraryCommands();
    for (const KeyOrder order : {KeyOrder::field, KeyOrder::sorted}) {
        for (const JSONLayout layout : {JSONLayout::compact, JSONLayout::pretty}) {
            RC_ASSERT(decode(SnapCommandCodec::encodeList(commands, order, layout)) == commands);
        }
    }
}

RC_GTEST_PROP(SnapCommandCodec, aTextCutAnywhereIsRefused, ()) {
    const std::string text = SnapCommandCodec::encodeList({arbitraryCommand()}, KeyOrder::sorted);
    const auto length = *rc::gen::inRange<std::size_t>(0, text.size());
    RC_ASSERT(!decode(std::string_view(text).substr(0, length)));
}

RC_GTEST_PROP(SnapCommandCodec, whatADamagedTextStillSaysIsReadBack, ()) {
    std::string text = SnapCommandCodec::encodeList(arbitraryCommands(), KeyOrder::field);
    const auto place = *rc::gen::inRange<std::size_t>(0, text.size());
    text[place] = *rc::gen::arbitrary<char>();
    if (const auto commands = decode(text)) {
        RC_ASSERT(decode(SnapCommandCodec::encodeList(*commands, KeyOrder::sorted)) == commands);
    }
}

}  // namespace
}  // namespace lumatile
