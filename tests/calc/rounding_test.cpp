#include "calc/rounding.h"

#include <gtest/gtest.h>

// Amounts as whole ten-thousandths of a yen: the expected values need no fractions and no doubles.
TEST(Rounding, EveryUnitAndModeMatchesDecimalArithmetic) {
    const qint64 amounts[] = {0,          1,         9989,      9990,      9999,       10000,    1000005,
                              1000010,    4999,      5000,      24000,     9025237500, 49999,    50000,
                              999990,     4999990,   5000000,   99999990,  123456789,  50000000, 99999999999,
                              1428571428, 100000010, 100000009, -24000,    -5000,      -4999,    -50000,
                              -59999,     -100000,   -999990,   -123456789};
    const qint64 units[] = {1, 10, 100, 1000, 10000};
    for (int unit = 0; unit < 5; ++unit)
        for (int mode = 0; mode < 3; ++mode)
            for (qint64 amount : amounts) {
                const qint64 step = units[unit] * 10000;
                const qint64 added[] = {step / 2, step - 10, 0};  // 切り上げ: a thousandth short of the unit
                const qint64 expected =
                    (amount + added[mode]) / step * units[unit];  // integers divide toward zero
                const auto rounded = calc::roundByTable(static_cast<double>(amount) / 10000,
                                                        QString::number(unit), QString::number(mode));
                ASSERT_TRUE(rounded.has_value());
                EXPECT_EQ(*rounded, static_cast<double>(expected))
                    << amount << " unit " << unit << " mode " << mode;
            }
}

TEST(Rounding, ASettingOutsideTheTableGivesNothing) {
    const char* const settings[][2] = {{"5", "0"},  {"0", "3"}, {"", "0"},  {"0", ""},
                                       {"00", "0"}, {"/", "0"}, {"0", "１"}};
    for (const auto& [tanka, hasuu] : settings)
        EXPECT_FALSE(calc::roundByTable(1.5, QString::fromUtf8(tanka), QString::fromUtf8(hasuu)).has_value())
            << tanka << '|' << hasuu;
}
