#include "personnel/import_rows.h"

#include <QHash>
#include <algorithm>
#include <functional>

#include "personnel/code_book.h"
#include "schema/catalog.h"
#include "store/date_text.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using Kind = ImportItem::Kind;
using Outcome = ImportRow::Outcome;

QString tableOf(ImportKind kind) {
    return kind == ImportKind::Employees ? u"履歴書テーブル"_s : u"異動テーブル"_s;
}

std::vector<ImportItem> employeeItems(const EntryItems& entered) {
    std::vector<ImportItem> items = {
        {u"社員Code"_s, u"社員Code"_s, Kind::Key, true}, {u"氏名"_s, u"氏名"_s, Kind::Text},
        {u"フリガナ"_s, u"フリガナ"_s, Kind::Text},      {u"性別"_s, u"性別"_s, Kind::Option},
        {u"婚姻区分"_s, u"婚姻区分"_s, Kind::Option},    {u"世帯主区分"_s, u"世帯主区分"_s, Kind::Option},
        {u"生年月日"_s, u"生年月日"_s, Kind::Date},      {u"入社日"_s, u"入社日"_s, Kind::Date},
        {u"最終学歴"_s, u"最終学歴"_s, Kind::Choice},    {u"郵便番号"_s, u"郵便番号"_s, Kind::Text},
        {u"住所1"_s, u"住所１"_s, Kind::Text},           {u"住所2"_s, u"住所２"_s, Kind::Text},
        {u"電話番号"_s, u"tel"_s, Kind::Text},           {u"fax番号"_s, u"fax"_s, Kind::Text},
        {u"出身地"_s, u"出身地"_s, Kind::Choice},        {u"住宅区分"_s, u"住宅区分"_s, Kind::Choice},
        {u"採用区分"_s, u"採用区分"_s, Kind::Choice}};
    for (int i = 1; i <= EntryItems::kAttributes; ++i) {
        const QString column = u"自由%1"_s.arg(i);
        // A switched-off attribute has no name of its own to be headed by.
        items.push_back({column, entered.entered(column) ? entered.caption(column) : column, Kind::Choice});
    }
    return items;
}

std::vector<ImportItem> transferItems() {
    std::vector<ImportItem> items = {{u"社員Code"_s, u"社員Code"_s, Kind::Key, true},
                                     {u"異動日"_s, u"異動日"_s, Kind::Date, true}};
    for (const char16_t* choice :
         {u"異動事由", u"社員区分", u"所属大", u"所属小", u"役職", u"職種", u"コース"})
        items.push_back({QString::fromUtf16(choice), QString::fromUtf16(choice), Kind::Choice});
    items.push_back({u"等級"_s, u"等級"_s, Kind::Text});
    items.push_back({u"コメント"_s, u"コメント"_s, Kind::Text});
    return items;
}

/// What both kinds of rows have in common: texts merged from the cells and what stands, faults, values.
class Judge : public RowJudge {
  public:
    Judge(store::Connection& cn, ImportKind kind, const ImportWish& wish)
        : entered_(EntryItems::read(cn)), items_(importItems(entered_, kind)), wish_(wish), book_(cn) {}

    const std::vector<ImportItem>& items() const override { return items_; }

    ImportRow judge(int line, const QStringList& cells) override {
        cells_ = cells;
        texts_ = cells;
        faults_.clear();
        cells_[0] = texts_[0] = paddedSyainCode(cells[0]);
        const QString key = checkKey(line);
        const auto held = standing_.constFind(key);
        const bool exists = !key.isEmpty() && held != standing_.constEnd();
        former_ = exists ? *held : QStringList();
        if (exists) takeStanding();
        if (exists && !wish_.updateExisting) fault(duplicate());
        checkCells();
        checkFields();
        if (!faults_.isEmpty()) return {line, texts_[0], subject(), Outcome::Refused, faults_, {}};
        return {line, texts_[0], subject(), exists ? Outcome::Update : Outcome::Add, notices(), values()};
    }

  protected:
    /// Checks what names the row and answers it as one text; empty when it names none.
    virtual QString checkKey(int line) = 0;
    virtual Fault duplicate() const = 0;
    virtual void checkFields() = 0;
    virtual QString subject() const = 0;
    /// What to look at before an accepted row is written.
    virtual QStringList notices() const { return {}; }

    void fault(const Finding& finding) {
        if (finding && !faults_.contains(finding->text)) faults_ << finding->text;
    }
    /// A row of the sheet with the same key stands above.
    void faultTwice(const QString& key, int line, const Fault& twice) {
        const auto above = lines_.constFind(key);
        if (above != lines_.constEnd())
            fault(Fault{twice.text + u"（%1行目と同じ）"_s.arg(*above), twice.title});
        else
            lines_.insert(key, line);
    }

    std::size_t indexOf(const QString& column) const {
        const auto found = std::find_if(items_.begin(), items_.end(),
                                        [&](const ImportItem& item) { return item.column == column; });
        Q_ASSERT(found != items_.end());
        return std::size_t(found - items_.begin());
    }
    QString& text(const QString& column) { return texts_[qsizetype(indexOf(column))]; }
    bool isGiven(const QString& column) const { return !cells_[qsizetype(indexOf(column))].isEmpty(); }
    /// What the row's column held so far; empty of a new row.
    QString standing(const QString& column) const { return former_.value(qsizetype(indexOf(column))); }
    QDate date(const QString& column) { return store::parseDate(text(column)).value_or(QDate()); }
    /// A given cell becomes a code; false after a fault.
    bool resolve(const QString& column, QDate on = {}, const QString& syozokuDai = {}) {
        if (!isGiven(column)) return true;
        const Finding finding = book_.resolve(column, text(column), on, syozokuDai);
        if (finding)
            fault(Fault{QString(finding->text).replace(column, entered_.caption(column)), finding->title});
        return !finding;
    }

    /// Everything that stands, by key; its columns as items_.
    void readStanding(store::Connection& cn, ImportKind kind,
                      const std::function<QString(const QStringList&)>& key) {
        QStringList columns;
        for (const ImportItem& item : items_) columns << item.column;
        auto row = cn.prepare(u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(columns.join(u','), tableOf(kind)));
        while (row.step()) {
            QStringList texts;
            for (int i = 0; i < row.columnCount(); ++i) texts << row.value(i).toText();
            const QString name = key(texts);
            if (!standing_.contains(name)) standing_.insert(name, texts);
        }
    }

    EntryItems entered_;
    std::vector<ImportItem> items_;
    ImportWish wish_;
    CodeBook book_;
    QStringList faults_;

    QStringList texts_;  ///< of the row, as items_: the cells, and what stands in the place of empty ones

  private:
    void takeStanding() {
        for (qsizetype i = 0; i < texts_.size(); ++i)
            if (texts_[i].isEmpty()) texts_[i] = former_[i];
    }
    /// What no field of a screen would take in: an item switched off, a line's end.
    void checkCells() {
        for (qsizetype i = 0; i < cells_.size(); ++i) {
            const ImportItem& item = items_[std::size_t(i)];
            if (!cells_[i].isEmpty() && !entered_.entered(item.column))
                fault(Fault{u"入力しない設定の項目です。･･･"_s + item.heading, u"入力エラー"_s});
            if (std::any_of(cells_[i].begin(), cells_[i].end(), [](QChar c) { return c < u' '; }))
                fault(Fault{u"項目中に改行を含むことはできません。･･･"_s + item.heading, u"入力エラー"_s});
        }
    }
    store::Binds values() {
        store::Binds values;
        for (const ImportItem& item : items_) {
            const QString& content = text(item.column);
            if (content.isEmpty())
                values.emplace_back();
            else if (item.kind == Kind::Date)
                values.emplace_back(date(item.column));
            else
                values.emplace_back(content);
        }
        return values;
    }

    QStringList cells_;   ///< of the row, as items_
    QStringList former_;  ///< what stands, as items_; empty without such a row
    QHash<QString, QStringList> standing_;
    QHash<QString, int> lines_;  ///< where the sheet names each key first
};

class EmployeeJudge : public Judge {
  public:
    EmployeeJudge(store::Connection& cn, const ImportWish& wish) : Judge(cn, ImportKind::Employees, wish) {
        readStanding(cn, ImportKind::Employees, [](const QStringList& texts) { return texts.first(); });
    }

  protected:
    QString checkKey(int line) override {
        const QString code = text(u"社員Code"_s);
        if (const Finding finding = checkSyainCode(code)) {
            fault(finding);
            return {};
        }
        faultTwice(code, line, duplicateSyainCode());
        return code;
    }
    Fault duplicate() const override { return duplicateSyainCode(); }
    QString subject() const override { return texts_.value(1); }
    /// A wrong 社員Code would put somebody else in the place of this person.
    QStringList notices() const override {
        const QString former = standing(u"氏名"_s);
        if (former.isEmpty() || former == subject()) return {};
        return {u"いまの氏名は「%1」です。"_s.arg(former)};
    }

    void checkFields() override {
        for (const ImportItem& item : items_) checkField(item);
        fault(checkSeinengappi(text(u"生年月日"_s), wish_.today));
        fault(checkNyuusyabi(text(u"入社日"_s), date(u"生年月日"_s)));
    }

  private:
    void checkField(const ImportItem& item) {
        switch (item.kind) {
            case Kind::Text:
                return fault(checkEmployeeText(item.column, text(item.column)));
            case Kind::Option:
                if (text(item.column).isEmpty()) text(item.column) = u"1"_s;
                resolve(item.column);
                return;
            case Kind::Choice:
                if (resolve(item.column))
                    fault(checkEmployeeChoice(entered_, item.column, text(item.column)));
                return;
            case Kind::Key:
            case Kind::Date:
                return;
        }
    }
};

class TransferJudge : public Judge {
  public:
    TransferJudge(store::Connection& cn, const ImportWish& wish) : Judge(cn, ImportKind::Transfers, wish) {
        readStanding(cn, ImportKind::Transfers,
                     [](const QStringList& texts) { return texts[0] + u' ' + texts[1]; });
        auto person = cn.prepare(u"SELECT 社員Code,入社日 FROM 履歴書テーブル"_s);
        while (person.step()) joined_.insert(person.toText(0), person.isNull(1) ? QDate() : person.toDate(1));
    }

  protected:
    QString checkKey(int line) override {
        const QString code = text(u"社員Code"_s);
        const auto joined = joined_.constFind(code);
        const bool known = joined != joined_.constEnd();
        if (const Finding finding = checkSyainCode(code))
            fault(finding);
        else if (!known)
            fault(Fault{u"この社員Codeの社員は登録されていません。･･･社員Code"_s, u"入力エラー"_s});
        const Finding finding = checkIdoubi(text(u"異動日"_s), known ? *joined : QDate());
        fault(finding);
        if (!known || finding) return {};
        text(u"異動日"_s) = store::formatDate(date(u"異動日"_s));
        const QString key = code + u' ' + text(u"異動日"_s);
        faultTwice(key, line, duplicateIdoubi());
        return key;
    }
    Fault duplicate() const override { return duplicateIdoubi(); }
    QString subject() const override { return texts_.value(1); }

    void checkFields() override {
        for (const ImportItem& item : items_)
            if (item.kind == Kind::Choice) checkChoice(item.column);
        QString& tokyu = text(u"等級"_s);
        if (entered_.entered(u"等級"_s)) {
            const Finding finding = checkTokyu(tokyu);
            fault(finding);
            if (!finding) tokyu = tokyuText(tokyu);
        }
        fault(checkComment(text(u"コメント"_s)));
    }

  private:
    void checkChoice(const QString& column) {
        const QString syozokuDai = text(u"所属大"_s);
        // As on the screen: a 所属小 does not outlive a change of its 所属大.
        if (column == u"所属小"_s && !isGiven(column) && syozokuDai != standing(u"所属大"_s))
            text(column).clear();
        if (resolve(column, date(u"異動日"_s), syozokuDai))
            fault(checkTransferChoice(entered_, column, text(column), book_.hasEntries(column, syozokuDai)));
    }

    QHash<QString, QDate> joined_;
};

QStringList columnsOf(ImportKind kind) {
    QStringList columns;
    for (const ImportItem& item : importItems(EntryItems(), kind)) columns << item.column;
    return columns;
}

/// What a new row has beside the import's columns.
QString insertStatement(ImportKind kind) {
    const QStringList columns = columnsOf(kind);
    const bool person = kind == ImportKind::Employees;
    const QStringList marks(columns.size(), u"?"_s);
    return u"INSERT INTO %1(%2%3) VALUES(%4%5)"_s.arg(tableOf(kind), columns.join(u','),
                                                      person ? u",退職フラグ"_s : QString(), marks.join(u','),
                                                      person ? u",0"_s : QString());
}

/// Parameters are numbered as the columns are, keys included.
QString updateStatement(ImportKind kind) {
    QStringList sets, keys;
    int number = 0;
    for (const ImportItem& item : importItems(EntryItems(), kind))
        (item.isKey ? keys : sets) << u"%1 = ?%2"_s.arg(item.column).arg(++number);
    return u"UPDATE %1 SET %2 WHERE %3"_s.arg(tableOf(kind), sets.join(u','), keys.join(u" AND "_s));
}

}  // namespace

std::vector<ImportItem> importItems(const EntryItems& entered, ImportKind kind) {
    return kind == ImportKind::Employees ? employeeItems(entered) : transferItems();
}

std::unique_ptr<RowJudge> makeRowJudge(store::Connection& cn, ImportKind kind, const ImportWish& wish) {
    if (kind == ImportKind::Employees) return std::make_unique<EmployeeJudge>(cn, wish);
    return std::make_unique<TransferJudge>(cn, wish);
}

ImportWriter::ImportWriter(store::Connection& cn, ImportKind kind)
    : insert_(cn.prepare(insertStatement(kind))), update_(cn.prepare(updateStatement(kind))) {
    for (store::Statement* statement : {&insert_, &update_})
        statement->into(schema::typesOf(schema::tableNamed(tableOf(kind)), columnsOf(kind)));
}

void ImportWriter::write(const ImportRow& row) {
    store::Statement& statement = row.outcome == Outcome::Add ? insert_ : update_;
    statement.bindAll(row.values);
    statement.run();
}

}  // namespace personnel
