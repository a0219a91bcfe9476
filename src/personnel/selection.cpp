#include "personnel/selection.h"

#include <algorithm>
#include <limits>

#include "domain/kana.h"
#include "personnel/position_in_force.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kByCode = u" ORDER BY CodeKey(R.社員Code)"_s;
const QString kJoinedBy = u"R.退職フラグ = 0 AND R.入社日 <= ?"_s;

FoundPeople read(store::Connection& cn, const QString& from, const store::Binds& binds) {
    auto row = cn.prepare(u"SELECT R.社員Code,R.氏名 FROM 履歴書テーブル AS R"_s + from + kByCode);
    row.bindAll(binds);
    FoundPeople people;
    while (row.step()) people.push_back({row.toText(0), row.toText(1)});
    return people;
}

/// A condition text of fixed parts and the values that go with it.
class Where {
  public:
    void add(const QString& condition, const store::Value& value) {
        conditions_ << condition;
        binds_.push_back(value);
    }
    /// Nothing is asked by an empty text.
    void addCode(const QString& column, const QString& code) {
        if (!code.isEmpty()) add(column + u" = ?"_s, code);
    }
    void addYears(const QString& comparison, const QString& typed) {
        if (typed.isEmpty()) return;
        const qint64 years = store::Value(typed).toInteger();
        if (years > std::numeric_limits<qint16>::max()) store::throwOverflow();
        add(comparison + u" ?"_s, years);
    }
    void addReading(const QString& beginning);

    bool isEmpty() const { return conditions_.isEmpty(); }
    QString text() const { return conditions_.join(u" AND "_s); }
    const store::Binds& binds() const { return binds_; }

  private:
    QStringList conditions_;
    store::Binds binds_;
};

/// Readings stand in the form that was chosen when they were entered: the beginning is looked for in all
/// three.
void Where::addReading(const QString& beginning) {
    if (beginning.isEmpty()) return;
    QStringList likes;
    for (const auto form :
         {domain::KanaForm::Hiragana, domain::KanaForm::Katakana, domain::KanaForm::HalfKatakana}) {
        QString pattern = domain::convertKana(beginning, form);
        for (const QChar special : {u'\\', u'%', u'_'}) pattern.replace(special, QString(u'\\') + special);
        likes << u"R.フリガナ LIKE ? ESCAPE '\\'"_s;
        binds_.push_back(QString(pattern + u'%'));
    }
    conditions_ << u'(' + likes.join(u" OR "_s) + u')';
}

Where conditionsOf(const SelectionConditions& asked) {
    Where where;
    where.addReading(asked.furigana);
    where.addCode(u"R.性別"_s, asked.seibetsu);
    for (std::size_t i = 0; i < kPositionItems.size(); ++i)
        where.addCode(u"T."_s + QString::fromUtf16(kPositionItems[i]), asked.position[i]);
    where.addYears(u"T.年齢 >="_s, asked.ageFrom);
    where.addYears(u"T.年齢 <="_s, asked.ageTo);
    where.addYears(u"T.勤続年数 >="_s, asked.tenureFrom);
    where.addYears(u"T.勤続年数 <="_s, asked.tenureTo);
    return where;
}

}  // namespace

FoundPeople selectPeople(store::Connection& cn, const SelectionConditions& conditions) {
    if (!conditions.syainCode.isEmpty())
        return read(cn, u" WHERE R.退職フラグ = 0 AND R.社員Code = ?"_s, {conditions.syainCode});
    Where where = conditionsOf(conditions);
    if (where.isEmpty()) return read(cn, u" WHERE "_s + kJoinedBy, {conditions.kijunbi});

    const PositionDates dates{conditions.kijunbi, conditions.kijunbi, conditions.kijunbi};
    const bool position = std::any_of(conditions.position.begin(), conditions.position.end(),
                                      [](const QString& code) { return !code.isEmpty(); });
    // Ages of both tables are the same; only the second one needs a transfer.
    if (position)
        SelectIntoX(cn, dates, WhoCounts::CurrentStaff);
    else
        SelectIntoY(cn, dates, WhoCounts::CurrentStaff);
    const QString table = position ? u"IdoChuusyutsuMax2"_s : u"IdoChuusyutsuNen"_s;
    where.add(kJoinedBy, conditions.kijunbi);
    return read(cn, u" INNER JOIN %1 AS T ON T.社員Code = R.社員Code WHERE "_s.arg(table) + where.text(),
                where.binds());
}

FoundPeople selectRetired(store::Connection& cn, QDate from, QDate to) {
    if (!from.isValid()) return read(cn, u" WHERE R.退職フラグ <> 0 AND R.退職日 <= ?"_s, {to});
    return read(cn, u" WHERE R.退職フラグ <> 0 AND R.退職日 >= ? AND R.退職日 <= ?"_s, {from, to});
}

FoundPeople selectLeaving(store::Connection& cn, QDate from) {
    return read(cn, u" WHERE R.退職フラグ <> 0 AND R.退職日 >= ?"_s, {from});
}

void storeSelection(store::Connection& cn, const QStringList& codes) {
    cn.execute(u"DELETE FROM 社員絞込"_s);
    cn.execute(u"INSERT INTO 社員絞込(社員Code) SELECT value FROM json_each(?) ORDER BY key"_s,
               {jsonArray(codes)});
}

}  // namespace personnel
