#include "platform/LogLine.h"

#include "platform/Utf8.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

struct Example {
    const char *format;
    const char *line;
};

TEST(LogLineTest, UnescapesPercentSigns) {
    for (const auto &[format, line] : {
             Example{"", ""},
             Example{"Fernhop: plain", "Fernhop: plain"},
             Example{"100%%", "100%"},
             Example{"%", "%"},
             Example{"%%", "%"},
             Example{"%%%", "%%"},
             Example{"%%%%", "%%"},
             Example{"a%%b%%c", "a%b%c"},
             Example{"%s %d %n %@ %1$s %-08.3lf %*d", "%s %d %n %@ %1$s %-08.3lf %*d"},
             Example{"https://x/%20%3A%F0%9F%8D%83", "https://x/%20%3A%F0%9F%8D%83"},
             Example{"%%s", "%s"},
             Example{"%5%%", "%5%"},
             Example{"ends in %2", "ends in %2"},
         })
        EXPECT_EQ(logLine(format), line) << format;
}

TEST(LogLineTest, EscapesCharactersThatAffectTheLine) {
    for (const auto &[format, line] : {
             Example{"a\nFernhop: forged", "a\\u000AFernhop: forged"},
             Example{"\r\t\x1b[31m\x7f", "\\u000D\\u0009\\u001B[31m\\u007F"},
             Example{"\u009b31m\u0085", "\\u009B31m\\u0085"},
             Example{"\u202egpj.exe\u2066", "\\u202Egpj.exe\\u2066"},
             Example{"\u2028\u2029\ufeff\u200f\u061c", "\\u2028\\u2029\\uFEFF\\u200F\\u061C"},
             Example{"%\n%", "%\\u000A%"},
             Example{"back\\slash, 链接, größe, 🍃", "back\\slash, 链接, größe, 🍃"},
         })
        EXPECT_EQ(logLine(format), line);
    EXPECT_EQ(logLine(std::string_view("a\0b", 3)), "a\\u0000b");
}

TEST(LogLineTest, EscapesInvalidUtf8) {
    for (const auto &[format, line] : {
             Example{"\x9b"
                     "31m",
                     "\\x9B31m"},
             Example{"\xc0\x8a", "\\xC0\\x8A"},
             Example{"\xe0\x82\x8a", "\\xE0\\x82\\x8A"},
             Example{"\xf0\x80\x80\x8a", "\\xF0\\x80\\x80\\x8A"},
             Example{"\xed\xa0\x80", "\\xED\\xA0\\x80"},
             Example{"\xf4\x90\x80\x80", "\\xF4\\x90\\x80\\x80"},
             Example{"\xe2\x82", "\\xE2\\x82"},
             Example{"\xff%%", "\\xFF%"},
         })
        EXPECT_EQ(logLine(format), line);
}

TEST(LogLineTest, EveryPairOfBytesGivesOneCleanLine) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string line =
                logLine(std::string{static_cast<char>(first), static_cast<char>(second)});
            EXPECT_TRUE(isValidUtf8(line));
            for (const char byte : line)
                EXPECT_TRUE(static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F);
        }
    }
}

TEST(LogLineTest, LongLinesAreKeptWhole) {
    const std::string url = "https://x/" + std::string(1'000'000, 'a');
    EXPECT_EQ(logLine("Fernhop: " + url + "%%"), "Fernhop: " + url + "%");
}

TEST(ShortenedLogLineTest, KeepsShortLines) {
    EXPECT_EQ(shortenedLogLine("", 64), "");
    EXPECT_EQ(shortenedLogLine(std::string(64, 'x'), 64), std::string(64, 'x'));
}

TEST(ShortenedLogLineTest, ShortensTheMiddleAndStatesTheLength) {
    const std::string line = "Fernhop: begin " + std::string(100'000, 'x') + " fallback=none";
    for (const std::size_t most : {64U, 65U, 100U, 4096U, 100'000U}) {
        const std::string shortened = shortenedLogLine(line, most);
        EXPECT_LE(shortened.size(), most);
        EXPECT_GT(shortened.size(), most / 2);
        EXPECT_TRUE(shortened.starts_with("Fernhop: begin ")) << shortened;
        EXPECT_TRUE(shortened.ends_with("one")) << shortened;
        const std::size_t start = shortened.find("[... ") + 5;
        const std::size_t taken = std::stoul(shortened.substr(start));
        const std::size_t note = std::string("[...  bytes ...]").size() + std::to_string(taken).size();
        EXPECT_EQ(shortened.size() - note + taken, line.size());
    }
}

TEST(ShortenedLogLineTest, SplitsNoCharacter) {
    std::string line;
    for (int time = 0; time < 200; ++time)
        line += "🍃链";
    for (std::size_t most = 64; most < 200; ++most) {
        const std::string shortened = shortenedLogLine(line, most);
        EXPECT_LE(shortened.size(), most);
        EXPECT_TRUE(isValidUtf8(shortened)) << shortened;
    }
}

} // namespace
} // namespace fernhop
