#pragma once

#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace fernhop::contract {

/// What the core relies on with every backend. Included once in each executable, which lists the backends.
template <typename Backend>
class UserDefaultsContract : public testing::Test {
  protected:
    Backend backend;
    UserDefaults &defaults = backend.defaults;

    void set(PropertyValue value) { EXPECT_TRUE(defaults.setObject(std::move(value), "key")); }
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, AbsentKeysReadAsNothing) {
    EXPECT_EQ(this->defaults.dictionaryForKey("key"), std::nullopt);
    EXPECT_EQ(this->defaults.dataForKey("key"), std::nullopt);
    EXPECT_EQ(this->defaults.stringForKey("key"), std::nullopt);
    EXPECT_FALSE(this->defaults.boolForKey("key"));
}

TYPED_TEST_P(UserDefaultsContract, EachTypeReadsAsWritten) {
    const PropertyDictionary rules{
        {"org.mail", PropertyValue{"firefox"}},
        {"größe.链接", PropertyValue{"a<&>\"' b"}},
        {"", PropertyValue{""}},
        {"nested", PropertyValue{PropertyDictionary{}}},
        {"list", PropertyValue{PropertyArray{PropertyValue{std::int64_t{-5}}, PropertyValue{0.1},
                                             PropertyValue{true}}}},
        {"date", PropertyValue{PropertyDate{86400.5}}},
        {"data", PropertyValue{PropertyData{"\xff"}}}};
    this->set(PropertyValue{rules});
    EXPECT_EQ(this->defaults.dictionaryForKey("key"), rules);

    this->set(PropertyValue{PropertyDictionary{}});
    EXPECT_EQ(this->defaults.dictionaryForKey("key"), PropertyDictionary{}) << "empty is not absent";

    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    for (const std::string &data :
         {bytes, std::string(), std::string(1, '\0'), std::string(1'000'000, 'x')}) {
        this->set(PropertyValue{PropertyData{data}});
        EXPECT_EQ(this->defaults.dataForKey("key"), data);
    }

    for (const char *text :
         {"firefox", "", " padded ", "line\nbreak\ttab", "größe 链接 🍃", "<![CDATA[&amp;]]>"}) {
        this->set(PropertyValue{text});
        EXPECT_EQ(this->defaults.stringForKey("key"), text);
    }

    for (const bool truth : {true, false}) {
        EXPECT_TRUE(this->defaults.setBool(truth, "key"));
        EXPECT_EQ(this->defaults.boolForKey("key"), truth);
    }
}

TYPED_TEST_P(UserDefaultsContract, ValuesOfOtherTypesReadAsNothing) {
    const PropertyValue text{"text"};
    const PropertyValue data{PropertyData{"data"}};
    const PropertyValue dictionary{PropertyDictionary{}};
    const PropertyValue array{PropertyArray{}};
    const PropertyValue number{std::int64_t{1}};
    const PropertyValue date{PropertyDate{0}};
    for (const PropertyValue &value : {text, data, array, number, date}) {
        this->set(value);
        EXPECT_EQ(this->defaults.dictionaryForKey("key"), std::nullopt);
    }
    for (const PropertyValue &value : {text, dictionary, array, number, date}) {
        this->set(value);
        EXPECT_EQ(this->defaults.dataForKey("key"), std::nullopt);
    }
    for (const PropertyValue &value : {data, dictionary, array, date}) {
        this->set(value);
        EXPECT_EQ(this->defaults.stringForKey("key"), std::nullopt);
        EXPECT_FALSE(this->defaults.boolForKey("key"));
    }
}

TYPED_TEST_P(UserDefaultsContract, NumbersReadAsTheirDecimalText) {
    for (const auto &[value, text] :
         {std::pair{PropertyValue{std::int64_t{0}}, "0"}, std::pair{PropertyValue{std::int64_t{-42}}, "-42"},
          std::pair{PropertyValue{INT64_MAX}, "9223372036854775807"},
          std::pair{PropertyValue{INT64_MIN}, "-9223372036854775808"}, std::pair{PropertyValue{1.5}, "1.5"},
          std::pair{PropertyValue{0.1}, "0.1"}, std::pair{PropertyValue{true}, "1"},
          std::pair{PropertyValue{false}, "0"}}) {
        this->set(value);
        EXPECT_EQ(this->defaults.stringForKey("key"), text);
    }
}

TYPED_TEST_P(UserDefaultsContract, NumbersAndTextsReadAsBooleans) {
    for (const PropertyValue &value :
         {PropertyValue{std::int64_t{1}}, PropertyValue{std::int64_t{-1}}, PropertyValue{0.5},
          PropertyValue{"YES"}, PropertyValue{"yes"}, PropertyValue{"true"}, PropertyValue{"T"},
          PropertyValue{"1"}, PropertyValue{"9"}}) {
        this->set(value);
        EXPECT_TRUE(this->defaults.boolForKey("key"));
    }
    for (const PropertyValue &value : {PropertyValue{std::int64_t{0}}, PropertyValue{0.0}, PropertyValue{""},
                                       PropertyValue{"NO"}, PropertyValue{"false"}, PropertyValue{"0"}}) {
        this->set(value);
        EXPECT_FALSE(this->defaults.boolForKey("key"));
    }
}

TYPED_TEST_P(UserDefaultsContract, NoValueRemovesTheKey) {
    this->defaults.setObject(PropertyValue{"kept"}, "other");
    this->set(PropertyValue{"text"});
    EXPECT_TRUE(this->defaults.setObject(std::nullopt, "key"));
    EXPECT_EQ(this->defaults.stringForKey("key"), std::nullopt);
    EXPECT_TRUE(this->defaults.setObject(std::nullopt, "key")) << "an absent key is removed already";
    EXPECT_EQ(this->defaults.stringForKey("other"), "kept");
}

TYPED_TEST_P(UserDefaultsContract, KeysAreIndependent) {
    this->defaults.setObject(PropertyValue{"1"}, "one");
    this->defaults.setObject(PropertyValue{"2"}, "ONE");
    this->defaults.setBool(true, "two");
    EXPECT_EQ(this->defaults.stringForKey("one"), "1");
    EXPECT_EQ(this->defaults.stringForKey("ONE"), "2");
    EXPECT_TRUE(this->defaults.boolForKey("two"));
}

TYPED_TEST_P(UserDefaultsContract, UpdatesReadWhatTheyWroteAndNest) {
    this->set(PropertyValue{"0"});
    EXPECT_TRUE(this->defaults.update([] {})) << "nothing is dropped";
    EXPECT_TRUE(this->defaults.update([&] {
        this->set(PropertyValue{*this->defaults.stringForKey("key") + "1"});
        this->defaults.update([&] { this->set(PropertyValue{*this->defaults.stringForKey("key") + "2"}); });
        EXPECT_EQ(this->defaults.stringForKey("key"), "012");
        this->set(PropertyValue{*this->defaults.stringForKey("key") + "3"});
    }));
    EXPECT_EQ(this->defaults.stringForKey("key"), "0123");
}

TYPED_TEST_P(UserDefaultsContract, ManyKeysAreKept) {
    this->defaults.update([&] {
        for (int number = 0; number < 2000; ++number)
            this->defaults.setObject(PropertyValue{std::int64_t{number}}, "key " + std::to_string(number));
    });
    for (int number = 0; number < 2000; number += 2)
        this->defaults.update(
            [&] { EXPECT_TRUE(this->defaults.stringForKey("key " + std::to_string(number))); });
    this->defaults.update([&] {
        for (int number = 0; number < 2000; number += 2)
            this->defaults.setObject(std::nullopt, "key " + std::to_string(number));
    });
    for (int number = 0; number < 2000; ++number)
        EXPECT_EQ(this->defaults.stringForKey("key " + std::to_string(number)).has_value(), number % 2 == 1);
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, AbsentKeysReadAsNothing, EachTypeReadsAsWritten,
                            ValuesOfOtherTypesReadAsNothing, NumbersReadAsTheirDecimalText,
                            NumbersAndTextsReadAsBooleans, NoValueRemovesTheKey, KeysAreIndependent,
                            UpdatesReadWhatTheyWroteAndNest, ManyKeysAreKept);

} // namespace fernhop::contract
