#pragma once
#include <QString>
#include <array>
#include <optional>

namespace domain {

/// The two base amounts. The number is their 処理区分 in the tables of the set-up.
enum class Base { A = 1, B = 2 };

inline constexpr int kCoefficients = 18;

/// One of the eighteen kinds of coefficient that act on a base amount. A value is always one of them; the
/// kinds stand in the order of their codes "01" to "18", in every table that has a column for each.
class CoefficientKind {
  public:
    /// 1 to 18; none for any other number.
    static constexpr std::optional<CoefficientKind> ofNumber(int number) {
        if (number < 1 || number > kCoefficients) return std::nullopt;
        return CoefficientKind(static_cast<std::size_t>(number - 1));
    }
    /// The code as the tables write it (設定名称), two digits; none for any other text, "1" among them.
    static std::optional<CoefficientKind> ofCode(const QString& code);
    static const std::array<CoefficientKind, kCoefficients>& all();

    constexpr std::size_t index() const { return index_; }  ///< 0 to 17
    QString code() const;                                   ///< "01" to "18"
    /// "年齢係数": the standard name, and the column of both run tables.
    const QString& name() const;

    /// Position in S実行個人別計算 and S実行総額配分.
    int runPosition() const;
    /// Position of what was used on a base, in the decision table of either calculation.
    int decisionPosition(Base base) const;

    /// Where an employee's key comes from when the coefficient is looked up.
    enum class KeySource {
        Years,     ///< a number of IdoChuusyutsuMax3: it always has a value
        Position,  ///< a code of IdoChuusyutsuMax3
        Person,    ///< a code of 履歴書テーブル
        Grade,     ///< the grade in the run's row
    };
    /// How automatic input finds the coefficient.
    struct LookUp {
        const char16_t* table;  ///< the set-up table that belongs to the kind; its coefficient is 係数
        int keyColumn;          ///< position of the key in it
        KeySource source;
        int employeeKey;  ///< position of the employee's key in the source
        int judgment;     ///< position in S実行自動入力判定
    };
    /// None for the four kinds that are always typed in: 出勤係数 and 入力1係数 to 入力3係数.
    const std::optional<LookUp>& lookUp() const;

    friend constexpr bool operator==(CoefficientKind, CoefficientKind) = default;

  private:
    constexpr explicit CoefficientKind(std::size_t index) : index_(index) {}
    std::size_t index_;
};

/// 評価係数, the one that goes by the grade.
inline constexpr CoefficientKind kGradeCoefficient = *CoefficientKind::ofNumber(4);

}  // namespace domain
