#include "prep/suspicions.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "design/run_filter.h"
#include "design/setup.h"
#include "personnel/position_in_force.h"
#include "prep/auto_plan.h"
#include "prep/snapshot.h"
#include "store/work.h"

namespace prep {
namespace {

using design::Houshiki;
using store::Money;

namespace t = schema::tables;

constexpr qsizetype kNamed = 5;
/// One run under one 算定方式, with the names of its people.
class Inputs {
  public:
    Inputs(store::Connection& cn, const domain::RunKey& run, Houshiki houshiki)
        : cn_(cn),
          run_(run),
          houshiki_(houshiki),
          setup_(design::readSetup(cn, run)),
          table_(runTableName(houshiki == Houshiki::Kojinbetsu ? RunTable::KojinBetsu
                                                               : RunTable::SougakuHaibun)) {
        auto name = cn.prepare(
            QStringLiteral("SELECT 行.社員Code, 人.氏名 FROM %1 AS 行 LEFT JOIN 履歴書テーブル AS 人 ON "
                           "人.社員Code = 行.社員Code WHERE %2 ORDER BY Clng(行.社員Code)")
                .arg(table_, design::kRunFilter));
        name.bindAll(design::runBinds(run));
        while (name.step()) {
            order_ << name.toText(0);
            names_.insert(name.toText(0), name.toText(1));
        }
    }

    void add(const QSet<QString>& codes, const QString& text, const QString& place, const QString& screen) {
        if (codes.isEmpty()) return;
        Suspicion found{text.arg(codes.size()), {}, place, screen};
        for (const QString& code : order_)
            if (codes.contains(code) && found.people.size() < kNamed)
                found.people << code + u' ' + names_.value(code);
        if (codes.size() > kNamed) found.people << QStringLiteral("ほか%1人").arg(codes.size() - kNamed);
        found_.push_back(std::move(found));
    }
    void addWithoutSnapshot() {
        add(codesWhere(
                QStringLiteral("社員Code NOT IN (SELECT 社員Code FROM IdoChuusyutsuMax2 WHERE 社員Code "
                               "IS NOT NULL)")),
            QStringLiteral("基準日の人事データにない社員が %1人います（退職した、異動履歴がないなど）。"),
            QStringLiteral("対象者⇔配分基準の対応"), QStringLiteral("frmSTaisyousya"));
    }
    QSet<QString> addWithoutGrade() {
        if (!gradeMatters()) return {};
        const QSet<QString> none = codesWhere(QStringLiteral("coalesce(評価, '') = ''"));
        add(none, QStringLiteral("評価の入っていない社員が %1人います。"), QStringLiteral("評価結果の取込"),
            QStringLiteral("frmSSanteishikiSub"));
        return none;
    }
    void addBasesAtDefault() {
        for (const auto& [kind, base] : {std::pair{design::Base::A, QStringLiteral("基礎額Ａ")},
                                         std::pair{design::Base::B, QStringLiteral("基礎額Ｂ")}}) {
            if (!setup_.of(houshiki_).baseActs(kind) || baseIsAutomatic(kind)) continue;
            auto row = cn_.prepare(QStringLiteral("SELECT 社員Code FROM %1 WHERE %2 AND %3 = ?")
                                       .arg(table_, design::kRunFilter, base));
            store::Binds binds = design::runBinds(run_);
            binds.push_back(Money::fromYen(10000));
            row.bindAll(binds);
            add(collect(row), base + QStringLiteral("が 10,000円のままの社員が %1人います。"),
                QStringLiteral("実行時入力"), QStringLiteral("frmSSanteishitei"));
        }
    }
    /// The automatic items beside what automatic input would give now.
    void addAutomatic(Houshiki houshiki, const QSet<QString>& withoutGrade) {
        const QString place = QStringLiteral("自動入力"), screen = QStringLiteral("frmSHaibunjikkouK");
        try {
            const store::Work takenBack(cn_);
            const AutoPlan plan = planAutoInput(cn_, run_, houshiki);
            if (plan.items.empty()) return;
            const Compared compared = compare(plan);
            add(compared.unfilled, QStringLiteral("自動入力がまだの項目のある社員が %1人います。"), place,
                screen);
            add(compared.changed,
                QStringLiteral(
                    "自動入力の結果と違う値の社員が %1人います（自動入力のあとに評価・人事データ・設定が"
                    "変わったか、値を修正しています）。"),
                place, screen);
            add(QSet<QString>(compared.notFound).subtract(withoutGrade),
                QStringLiteral("自動入力で値の見つからない項目（×）のある社員が %1人います。"), place,
                screen);
        } catch (const store::Error& error) {
            found_.push_back(
                {QStringLiteral("自動入力の結果を確かめられません。") + error.text(), {}, place, screen});
        }
    }
    std::vector<Suspicion> take() { return std::move(found_); }

  private:
    struct Compared {
        QSet<QString> unfilled, changed, notFound;
    };

    static QSet<QString> collect(store::Statement& row) {
        QSet<QString> codes;
        while (row.step()) codes.insert(row.toText(0));
        return codes;
    }
    QSet<QString> codesWhere(const QString& condition) {
        auto row = cn_.prepare(QStringLiteral("SELECT 社員Code FROM %1 WHERE %2 AND %3")
                                   .arg(table_, design::kRunFilter, condition));
        row.bindAll(design::runBinds(run_));
        return collect(row);
    }
    bool gradeMatters() const {
        return setup_.of(houshiki_).anyCoefficient([](const auto& use) {
            return use.isAutomaticGrade() && use.acts();
        }) || (houshiki_ == Houshiki::Kojinbetsu && !setup_.paymentsBy(design::Method::Derived).empty());
    }
    bool baseIsAutomatic(design::Base base) const {
        const auto uses = setup_.of(houshiki_).basesOf(base);
        return std::any_of(uses.begin(), uses.end(), [](const design::BaseUse& use) {
            return use.method == design::Method::Uniform || use.method == design::Method::Derived;
        });
    }

    Compared compare(const AutoPlan& plan) {
        QStringList columns{QStringLiteral("ID")};
        for (const AutoItem& item : plan.items) columns << design::columnName(table_, item.target);
        auto row = cn_.prepare(QStringLiteral("SELECT %1 FROM %2 WHERE %3 ORDER BY Clng(社員Code), ID")
                                   .arg(columns.join(u','), table_, design::kRunFilter));
        row.bindAll(design::runBinds(run_));
        Compared compared;
        for (std::size_t i = 0; row.step() && i < plan.run.rows.size(); ++i) {
            const QString& code = plan.run.rows[i].syainCode;
            int column = 0;
            for (const AutoItem& item : plan.items) judge(item.cells[i], row, ++column, code, compared);
        }
        return compared;
    }
    static void judge(const AutoCell& cell, const store::Statement& row, int column, const QString& code,
                      Compared& compared) {
        if (!cell.found) compared.notFound.insert(code);
        bool same = true, fresh = false;
        if (const auto* factor = std::get_if<double>(&cell.value)) {
            same = !row.isNull(column) && row.toDouble(column) == *factor;
            fresh = row.isNull(column) || row.toDouble(column) == 1;
        } else if (const auto* amount = std::get_if<Money>(&cell.value)) {
            same = !row.isNull(column) && row.toMoney(column) == *amount;
            fresh = row.isNull(column) || row.toMoney(column) == Money::fromYen(10000);
        }
        if (!same) (fresh ? compared.unfilled : compared.changed).insert(code);
    }

    store::Connection& cn_;
    domain::RunKey run_;
    Houshiki houshiki_;
    design::Setup setup_;
    QString table_;
    QStringList order_;
    QHash<QString, QString> names_;
    std::vector<Suspicion> found_;
};

}  // namespace

std::vector<Suspicion> suspicionsBeforeAutoInput(store::Connection& cn, const domain::RunKey& run,
                                                 Houshiki houshiki) {
    Inputs inputs(cn, run, houshiki);
    inputs.addWithoutSnapshot();
    inputs.addWithoutGrade();
    return inputs.take();
}

std::vector<Suspicion> suspicionsBeforeCalculation(store::Connection& cn, const domain::RunKey& run,
                                                   Houshiki houshiki) {
    Inputs inputs(cn, run, houshiki);
    inputs.addWithoutSnapshot();
    const QSet<QString> withoutGrade = inputs.addWithoutGrade();
    inputs.addBasesAtDefault();
    inputs.addAutomatic(houshiki, withoutGrade);
    return inputs.take();
}

}  // namespace prep
