#include "personnel/code_choices.h"

#include "schema/catalog.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kSince = u"設定年月日"_s;
const QString kSyozokuSyou = u"所属小"_s;

bool isDated(const QString& item) {
    for (const schema::Column& column : schema::tableNamed(masterOf(item)).columns)
        if (column.name == kSince) return true;
    return false;
}

std::vector<CodeChoice> read(store::Connection& cn, const QString& item, const QString& where,
                             const store::Binds& binds) {
    const QString since = isDated(item) ? kSince : u"NULL"_s;
    const QString parent = item == kSyozokuSyou ? u"所属大"_s : u"NULL"_s;
    auto row = cn.prepare(u"SELECT Code,%1,%2,%3 FROM %4%5 ORDER BY CodeKey(Code)"_s.arg(
        item, since, parent, masterOf(item), where));
    row.bindAll(binds);
    std::vector<CodeChoice> choices;
    while (row.step())
        choices.push_back(
            {row.toText(0), row.toText(1), row.isNull(2) ? QDate() : row.toDate(2), row.toText(3)});
    return choices;
}

}  // namespace

QString masterOf(const QString& item) {
    if (item.startsWith(u"自由"_s)) return u"自由マスタ"_s + item.back();
    return item + u"マスタ"_s;
}

std::vector<CodeChoice> codeChoices(store::Connection& cn, const QString& item) {
    return read(cn, item, {}, {});
}

std::vector<CodeChoice> codeChoicesAt(store::Connection& cn, const QString& item, QDate date,
                                      const QString& syozokuDai) {
    QStringList conditions;
    store::Binds binds;
    if (item == kSyozokuSyou) {
        if (syozokuDai.isEmpty()) return {};
        conditions << u"所属大 = ?"_s;
        binds.push_back(syozokuDai);
    }
    if (date.isValid() && isDated(item)) {
        conditions << u"設定年月日 <= ?"_s;
        binds.push_back(date);
    }
    const QString where = conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "_s);
    return read(cn, item, where, binds);
}

}  // namespace personnel
