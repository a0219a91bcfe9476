#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace domain {

/// Why a text may not stand. With `replacement` the cell takes that text; the focus stays in any case.
struct Refusal {
    QString text;
    QString title;
    std::optional<QString> replacement = {};
};

/// What the cells of a column that is filled in do with their texts. Functions that are not set admit
/// everything.
struct CellRules {
    QString heading;      ///< of the column: 金額, 係数, 評価
    QString hint;         ///< the guidance line
    QString characters;   ///< the keys that type something; empty for a cell with choices
    QStringList choices;  ///< not empty: the cell offers these instead of being typed in
    std::function<std::optional<Refusal>(const QString& text)> leave;  ///< when the cell is left
    std::function<std::optional<Refusal>(const QString& text)> save;   ///< when all is saved
    std::function<QString(const QString& text)> format;                ///< what the cell shows for its text
    /// What the cell holds of a typed text once it is left; not set: the text itself.
    std::function<QString(const QString& text)> settle;
    /// What the text counts in the running total; not set for cells that have none.
    std::function<double(const QString& text)> number;

    /// The cell's format, or all of the text where the format would leave out decimals.
    QString whole(const QString& text) const;
    /// "10,000" over 10000 is no change.
    bool differ(const QString& a, const QString& b) const;
    /// A pasted text as it would be typed.
    QString typed(const QString& pasted) const;
    /// Why it may not be pasted; empty where it may.
    QString fault(const QString& pasted) const;
};

/// The cells of a spreadsheet's clipboard text, line by line; a last line end makes no line.
QList<QStringList> pastedCells(const QString& clipboard);

/// A pasted number as it would be typed: half-width, without blanks around it and the yen sign before it.
QString plainNumber(const QString& pasted);

}  // namespace domain
