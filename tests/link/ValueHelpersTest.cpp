// The value and text helpers: each rule with its edge cases.
#include "link/ValueHelpers.h"
#include "link/ParamBlock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace velmorak;

namespace {

struct TextCase {
    const char* in;
    const char* out;
};

} // namespace

TEST(ValueHelpers, NormalizeRez) {
    const TextCase table[] = {
        {"800x600", "0800x600"}, // the last element is copied as it stands
        {"800x600x75", "0800x0600x0075"},
        {"1024x768 60Hz", "1024x768 60hz"},
        {"x600", "x600"},       // first "x" at the start
        {"abcx600", "abcx600"}, // first element not numeric
        {"640X480X60", "0640x0480x0060"},
        {" 640 x 480 x 60 ", "0640x0480x0060"},
        {"1x2x3", "0001x0002x0003"},
        {"12345x1x1", "12345x0001x0001"},
        {"800x600xHz", "0800x0600xhz"}, // third element not numeric: kept as it is
        {"800x600x", "0800x0600x"},
        {"800xx75", "0800xx75"},       // second "x" at pos: rest copied
        {"800xabcx75", "0800xabcx75"}, // second element not numeric
        {"800", "800"},
        {"", ""},
        {"1024x768x60x2", "1024x0768x60x2"}, // a fourth element is not split
    };
    for (const auto& c : table)
        EXPECT_EQ(NormalizeRez(QString::fromLatin1(c.in)), QString::fromLatin1(c.out)) << c.in;
}

TEST(ValueHelpers, RezHeight) {
    const struct {
        const char* in;
        int out;
    } table[] = {
        {"800x600x75", 75}, {"1024x768", 768},    {"1024", 0},    {"1024x", 0},
        {"800X600", 600},   {"800x 60 ", 60},     {"800xabc", 0}, {"", 0},
        {"1x74.5", 74},     {"1x75.5", 76},       {"1x-3", -3},   {"1x&H10", 16},
        {"x32767", 32767},  {"1024x768 60Hz", 0},
    };
    for (const auto& c : table)
        EXPECT_EQ(RezHeight(QString::fromLatin1(c.in)), c.out) << c.in;
    EXPECT_THROW(RezHeight(QStringLiteral("1x32768")), OverflowError);
}

TEST(ValueHelpers, PadCode) {
    const TextCase table[] = {
        {"", "    "}, {"A", "    A"}, {"AB", "   AB"}, {"ABC", "  ABC"}, {"ABCDEF", "  ABCDEF"},
    };
    for (const auto& c : table)
        EXPECT_EQ(PadCode(QString::fromLatin1(c.in)), QString::fromLatin1(c.out)) << c.in;
}

TEST(ValueHelpers, BytesToLong) {
    const struct {
        QByteArray in;
        const char* out;
    } table[] = {
        {QByteArray("\x01\x02", 2), " 513"},
        {QByteArray(), " 0"},
        {QByteArray(1, '\0'), " 0"},
        {QByteArray("\xff", 1), " 255"},
        {QByteArray("\x00\x00\x01", 3), " 65536"},
        {QByteArray("\xff\xff\xff\x7f", 4), " 2147483647"},
        {QByteArray("\x05\x00\x00\x00\x00", 5), " 5"},
    };
    for (const auto& c : table)
        EXPECT_EQ(BytesToLong(c.in), QString::fromLatin1(c.out));
    EXPECT_THROW(BytesToLong(QByteArray("\x00\x00\x00\x80", 4)), OverflowError);
    EXPECT_THROW(BytesToLong(QByteArray("\x00\x00\x00\x00\x01", 5)), OverflowError);
}

TEST(ValueHelpers, HexListToText) {
    const struct {
        const char* in;
        QByteArray out;
    } table[] = {
        {"00,FF,38", QByteArray("\x00\xff\x38", 3)},
        {"00,FF,", QByteArray("\x00\xff", 2)},
        {"ab,0c", QByteArray("\xab\x0c", 2)},
        {"", QByteArray()},
        {"F", QByteArray()}, // a single character is below the length test
        {"1Z,ZZ", QByteArray("\x01\x00", 2)},
    };
    for (const auto& c : table)
        EXPECT_EQ(HexListToText(QString::fromLatin1(c.in)), c.out) << c.in;
}

TEST(ValueHelpers, ReverseBits) {
    const struct {
        int value, top, out;
    } table[] = {
        {1, 7, 128},         {3, 3, 12}, {128, 7, 1}, {0x100, 7, 0}, // bits above nTop dropped
        {0b1101, 3, 0b1011}, {1, 0, 1},  {2, 0, 0},   {0x55, 7, 0xAA}, {1, 15, -32768},
    };
    for (const auto& c : table)
        EXPECT_EQ(ReverseBits(qint16(c.value), qint16(c.top)), c.out) << c.value << " " << c.top;
}

TEST(ValueHelpers, NumericAndVal) {
    const struct {
        const char* in;
        bool numeric;
        double val;
    } table[] = {
        {"75", true, 75},    {" 75 ", true, 75},  {"-3", true, -3},   {"1.5", true, 1.5},
        {"1e3", true, 1000}, {"&HFF", true, 255}, {"&o17", true, 15}, {"", false, 0},
        {"75hz", false, 75}, {"hz", false, 0},    {"&H", false, 0},   {"7 5", false, 75},
    };
    for (const auto& c : table) {
        EXPECT_EQ(IsNumeric(QString::fromLatin1(c.in)), c.numeric) << c.in;
        EXPECT_DOUBLE_EQ(Val(QString::fromLatin1(c.in)), c.val) << c.in;
    }
}

// Text through Val to 16 and 32 bits: half to even, error 6 beyond the range, or the clamp.
TEST(ValueHelpers, CheckedIntegers) {
    const qint64 kError = std::numeric_limits<qint64>::min();
    const struct {
        const char* text;
        qint64 int16, int32, int16Clamped;
    } table[] = {
        {"32767.5", kError, 32768, 32767},
        {"32766.5", 32766, 32766, 32766},
        {"-32768.5", -32768, -32768, -32768},
        {"-32769.5", kError, -32770, -32768},
        {"2.5", 2, 2, 2},
        {"-2.5", -2, -2, -2},
        {"3.5", 4, 4, 4},
        {"99999", kError, 99999, 32767},
        {"1e12", kError, kError, 32767},
        {"-1e12", kError, kError, -32768},
        {"2147483647.4", kError, 2147483647, 32767},
        {"2147483647.5", kError, kError, 32767},
        {"-2147483648.5", kError, -2147483648LL, -32768},
        {"1e999", kError, kError, 32767}, // beyond a double
        {"nan", 0, 0, 0},                 // not a number: Val reads 0
        {"&HFFFF", kError, 65535, 32767},
        {"abc", 0, 0, 0},
    };
    for (const auto& c : table) {
        SCOPED_TRACE(c.text);
        const double v = Val(QString::fromLatin1(c.text));
        if (c.int16 == kError)
            EXPECT_THROW(ToInt16(v), OverflowError);
        else
            EXPECT_EQ(ToInt16(v), c.int16);
        if (c.int32 == kError)
            EXPECT_THROW(ToInt32(v), OverflowError);
        else
            EXPECT_EQ(ToInt32(v), c.int32);
        EXPECT_EQ(ToInt16(v, OnOverflow::Clamp), c.int16Clamped);
    }
    EXPECT_EQ(ToInt32(std::nan(""), OnOverflow::Clamp), 0);
    EXPECT_EQ(ToInt32(-1e12, OnOverflow::Clamp), std::numeric_limits<qint32>::min());
    try {
        ToInt16(40000);
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.number(), 6);
        EXPECT_STREQ(e.what(), "Overflow");
    }
}
