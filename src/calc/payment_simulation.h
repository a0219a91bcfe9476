#pragma once
#include <QHash>
#include <QString>
#include <array>
#include <optional>

#include "domain/run_key.h"
#include "store/connection.h"

namespace calc {

/// The boxes and labels of one grade on the panel 支給係数シミュレーション; all empty where the row is not
/// used.
struct PanelGrade {
    QString hyouka;      ///< Label12: the grade letter
    QString registered;  ///< Label13: the registered 支給係数, "##,##0.000"
    QString corrected;   ///< Text3: the corrected one; the box is visible exactly when it is not empty
    QString hyoukaCode;  ///< Label16
};

/// The panel as it stands when 計算, 一覧表 or the sheet is pressed. Hidden boxes keep their texts, and the
/// store step reads them whatever the mode; the calculation and the coefficient line follow the mode alone.
struct PaymentSimulation {
    static constexpr int kGrades = 9;
    enum class Mode {
        Closed,   ///< the panel is not open
        Uniform,  ///< open with Text4 visible
        Grades,   ///< open with Text3(0) visible
    };
    Mode mode = Mode::Closed;
    QString hyougoType;         ///< hyougo_type, "1" to "12": the grade scale
    QString uniformCorrected;   ///< Text4
    QString uniformRegistered;  ///< Label14
    std::array<PanelGrade, kGrades> grades;
};

/// What a box takes at most; 0 is the least.
inline constexpr double kLargestCoefficient = 999.999;

/// A coefficient from the text of a box or label: separators are ignored. Error(Type) when it is no number.
double coefficientOfText(const QString& text);

/// The place of a grade letter on the scale of a 評語タイプ, from 0; nullopt when the scale or the letter
/// does not exist.
std::optional<int> gradeIndex(const QString& hyougoType, const QString& grade);

/// Per grade letter the rows that S支給係数評価あり has of it for the run's criterion.
using RegisteredGrades = QHash<QString, int>;
RegisteredGrades readRegisteredGrades(store::Connection& connection, const domain::RunKey& run);

/// Each employee's effective payment coefficient of one run. A simulation scales the stored coefficient by
/// corrected ÷ registered and never replaces it.
class EffectiveCoefficient {
  public:
    EffectiveCoefficient(const RegisteredGrades& registered, const PaymentSimulation& simulation)
        : simulation_(simulation), registered_(registered) {}
    /// `grade` is the employee's 評価, `stored` the employee's 支給係数. Throws Error(DivideByZero) for a
    /// registered coefficient of 0, Error(Type) for a grade without exactly one registered row or outside the
    /// scale.
    double of(const QString& grade, double stored);

  private:
    double ratioOf(const QString& grade) const;

    PaymentSimulation simulation_;
    RegisteredGrades registered_;
    QHash<QString, double> ratios_;  ///< by grade, filled as employees come; "" for the uniform one
};

}  // namespace calc
