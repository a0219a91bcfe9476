#pragma once
#include <QDate>
#include <QString>
#include <vector>

#include "store/connection.h"

/// The masters that a new company can begin with, filled as they usually are in a Japanese office. The user
/// goes on from there.
namespace company {

struct MasterTemplate {
    QString table;
    QString caption;
    bool required = false;  ///< has to be filled before people can be entered
    struct Row {
        QString name;
        store::Value extra = {};  ///< the column behind the name, where the master has one of its own
    };
    std::vector<Row> rows;  ///< their codes count from 01
};

/// In the order of the master menu.
const std::vector<MasterTemplate>& masterTemplates();
/// Writes the template of that table into a new 基本db; `since` is the 設定年月日 of its entries.
void fillMaster(store::Connection& kihon, const MasterTemplate& master, QDate since);

}  // namespace company
