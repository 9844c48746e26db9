#include "platform/linux/settings/PropertyList.h"

#include "SettingsFolder.h"
#include "platform/linux/settings/PropertyListGuard.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

namespace fernhop::freedesktop {
namespace {

std::string repeated(const std::string &text, std::size_t times) {
    std::string result;
    for (std::size_t time = 0; time < times; ++time)
        result += text;
    return result;
}

std::string nested(std::size_t depth) {
    return xmlList(repeated("<array>", depth) + repeated("</array>", depth));
}

/// Writes binary property lists object by object, right or wrong.
class BinaryList {
  public:
    /// `object` becomes the next object; its number.
    std::size_t add(const std::string &object) {
        offsets.push_back(bytes.size());
        bytes += object;
        return offsets.size() - 1;
    }

    static std::string array(const std::vector<std::size_t> &elements) {
        std::string object(1, static_cast<char>(0xA0 + elements.size()));
        for (const std::size_t element : elements)
            object += big(element, 2);
        return object;
    }

    static std::string big(std::size_t number, std::size_t size) {
        std::string text(size, '\0');
        for (std::size_t place = size; place-- > 0; number >>= 8U)
            text[place] = static_cast<char>(number & 0xFFU);
        return text;
    }

    [[nodiscard]] std::string finished(std::size_t root) const {
        std::string list = bytes;
        for (const std::size_t offset : offsets)
            list += big(offset, 4);
        return list + std::string(6, '\0') + big(4, 1) + big(2, 1) + big(offsets.size(), 8) + big(root, 8) +
               big(bytes.size(), 8);
    }

  private:
    std::string bytes = "bplist00";
    std::vector<std::size_t> offsets;
};

TEST(PropertyListCodingTest, DepthIsLimitedInXml) {
    EXPECT_TRUE(decodePropertyList(nested(propertyListLimit::depth)));
    EXPECT_FALSE(decodePropertyList(nested(propertyListLimit::depth + 1)));
    EXPECT_FALSE(decodePropertyList(nested(100'000)));
    EXPECT_FALSE(decodePropertyList(xmlList(repeated("<array>", 100'000)))) << "never closed";
}

TEST(PropertyListCodingTest, DepthCannotBeHidden) {
    const std::string open = "<array>";
    for (const std::string hidden :
         {"<!-- </array> -->", "<string><![CDATA[</array>]]></string>", "<string a=\"</array>\"/>",
          "<?x \"?></array>\"?>", "<plist x=\"</array>\">", "<!DOCTYPE \"</array>\">"})
        EXPECT_FALSE(isSafeXmlPropertyList(xmlList(repeated(open + hidden, 100'000)))) << hidden;
    for (const std::string prolog : {"<?x \"?><plist></array>\"?>", "<!-- <plist> </array> -->",
                                     "<!DOCTYPE x [ <plist> ]>", "<!DOCTYPE \"><plist>\">"})
        EXPECT_FALSE(isSafeXmlPropertyList(prolog + "<plist version=\"1.0\">" + repeated(open, 100'000)))
            << prolog;
}

TEST(PropertyListCodingTest, ElementsAreLimitedInXml) {
    EXPECT_TRUE(decodePropertyList(xmlList("<array>" + repeated("<true/>", 200'000) + "</array>")));
    EXPECT_FALSE(decodePropertyList(xmlList("<array>" + repeated("<true/>", 300'000) + "</array>")));
}

TEST(PropertyListCodingTest, ReadsDeclarationsAndComments) {
    const auto tree =
        decodePropertyList("\n<?xml version='1.0'?><!-- by \"hand -->\n" +
                           xmlList("<!-- <dict> --><dict ><key>a</key ><string>x<![CDATA[<dict>]]>"
                                   "<!-- y -->z &amp; &#x20AC;</string><key>b</key><array /></dict >")
                               .substr(39));
    ASSERT_TRUE(tree);
    char *text = nullptr;
    plist_get_string_val(plist_dict_get_item(tree.get(), "a"), &text);
    EXPECT_STREQ(text, "x<dict>z & €");
    free(text);
}

TEST(PropertyListCodingTest, SharedObjectsAreCountedAsOftenAsTheyAreCopied) {
    BinaryList list;
    std::size_t below = list.add("\x09");
    for (int level = 0; level < 20; ++level)
        below = list.add(BinaryList::array(std::vector<std::size_t>(10, below)));
    EXPECT_FALSE(decodePropertyList(list.finished(below))) << "ten to the twentieth elements";
    EXPECT_TRUE(decodePropertyList(list.finished(4))) << "ten thousand";
}

TEST(PropertyListCodingTest, SharedBytesAreCountedAsOftenAsTheyAreCopied) {
    BinaryList list;
    const std::size_t data =
        list.add("\x4F\x12" + BinaryList::big(1'000'000, 4) + std::string(1'000'000, 'x'));
    std::size_t below = data;
    for (int level = 0; level < 3; ++level)
        below = list.add(BinaryList::array(std::vector<std::size_t>(10, below)));
    EXPECT_TRUE(decodePropertyList(list.finished(data)));
    EXPECT_FALSE(decodePropertyList(list.finished(below))) << "a gigabyte";
}

TEST(PropertyListCodingTest, CyclesAreRefused) {
    BinaryList itself;
    itself.add(BinaryList::array({0, 0}));
    EXPECT_FALSE(decodePropertyList(itself.finished(0)));
    BinaryList round;
    for (std::size_t object = 0; object < 60; ++object)
        round.add(BinaryList::array({(object + 1) % 60, (object + 7) % 60, (object + 11) % 60}));
    EXPECT_FALSE(decodePropertyList(round.finished(0)));
}

TEST(PropertyListCodingTest, DepthIsLimitedInBinary) {
    BinaryList list;
    std::size_t below = list.add("\x09");
    for (std::size_t level = 0; level < 5'000; ++level)
        below = list.add(BinaryList::array({below}));
    EXPECT_TRUE(decodePropertyList(list.finished(propertyListLimit::depth)));
    EXPECT_FALSE(decodePropertyList(list.finished(propertyListLimit::depth + 1)));
    EXPECT_FALSE(decodePropertyList(list.finished(5'000)));
}

TEST(PropertyListCodingTest, InvalidTextIsRefused) {
    for (const std::string text : {"\xff", "&#xD800;", "&#55296;", "\xed\xa0\x80"})
        EXPECT_FALSE(decodePropertyList(xmlList("<array><string>" + text + "</string></array>"))) << text;
    EXPECT_FALSE(decodePropertyList(xmlList("<string>a" + std::string(1, '\0') + "b</string>")));
    EXPECT_TRUE(decodePropertyList(xmlList("<string>&#xE000;&#9;</string>")));

    const auto binary = [](const std::string &object) {
        BinaryList list;
        return decodePropertyList(list.finished(list.add(object)));
    };
    const std::string low = BinaryList::big(0xDF40, 2);
    const std::string high = BinaryList::big(0xD83C, 2);
    EXPECT_TRUE(binary("\x62" + high + low));
    for (const std::string &units :
         {high + high, low + high, low + low, high + BinaryList::big('a', 2), BinaryList::big('a', 2) + high,
          BinaryList::big('a', 2) + std::string(2, '\0')})
        EXPECT_FALSE(binary("\x62" + units));
    EXPECT_TRUE(binary("\x53zzz"));
    EXPECT_FALSE(binary("\x53z\xf4z"));
    EXPECT_FALSE(binary(std::string("\x53z\0z", 4)));
}

TEST(PropertyListCodingTest, EveryCutOfAListIsRefused) {
    BinaryList list;
    const std::size_t text = list.add("\x54text");
    const std::string binary = list.finished(list.add(BinaryList::array({text, text})));
    ASSERT_TRUE(decodePropertyList(binary));
    for (std::size_t length = 0; length < binary.size(); ++length)
        EXPECT_FALSE(decodePropertyList(std::string(binary, 0, length))) << length;
    const std::string xml = xmlList("<dict><key>a</key><string>b</string></dict>");
    for (std::size_t length = 0; length < xml.find("</dict>") + 7; ++length)
        EXPECT_FALSE(decodePropertyList(std::string(xml, 0, length))) << length;
}

TEST(PropertyListCodingTest, EveryChangedByteIsSurvived) {
    BinaryList list;
    const std::size_t text = list.add("\x54text");
    const std::size_t number = list.add("\x13\x01\x02\x03\x04\x05\x06\x07\x08");
    const std::string binary = list.finished(list.add(BinaryList::array({text, number})));
    for (std::size_t place = 0; place < binary.size(); ++place) {
        for (int value = 0; value < 256; ++value) {
            std::string changed = binary;
            changed[place] = static_cast<char>(value);
            if (const auto tree = decodePropertyList(changed)) {
                EXPECT_TRUE(encodePropertyList(tree));
            }
        }
    }
}

TEST(PropertyListCodingTest, WritesXmlWhereXmlCanHoldTheValues) {
    const PropertyListNode plain(plist_new_dict());
    plist_dict_set_item(plain.get(), "date", plist_new_date(1000, 0));
    EXPECT_TRUE(encodePropertyList(plain).value().starts_with("<?xml"));
    plist_dict_set_item(plain.get(), "date", plist_new_date(1000, 1));
    EXPECT_TRUE(encodePropertyList(plain).value().starts_with("bplist00"));
}

} // namespace
} // namespace fernhop::freedesktop
