#pragma once
#include <QString>
#include <variant>
#include <vector>

#include "design/run_filter.h"
#include "design/setup.h"

namespace prep {

/// A run that automatic input fills: its rows in the order of Clng(社員Code).
struct AutoRun {
    struct Row {
        qint64 id;
        QString syainCode;
        QString hyouka;  ///< the grade; empty for none
    };
    store::Connection& cn;
    domain::RunKey key;
    design::Houshiki houshiki;  ///< Kojinbetsu or Sougaku
    design::Setup setup;
    QString table;  ///< S実行個人別計算 or S実行総額配分
    std::vector<Row> rows;
};

/// What one item gives one employee: the value (none keeps what stood there) and ○ or ×.
struct AutoCell {
    std::variant<std::monostate, double, store::Money> value;
    bool found = false;
};

/// An item on automatic input: where it is written, and a cell for each row of the run.
struct AutoItem {
    int target;    ///< position in the run's table
    int judgment;  ///< position in S実行自動入力判定
    std::vector<AutoCell> cells;
};

}  // namespace prep
