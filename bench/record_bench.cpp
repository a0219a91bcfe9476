#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include "company/create.h"
#include "company/key.h"
#include "company/main_connection.h"
#include "forms/global_record.h"
#include "masters/frmMasta.h"
#include "personnel/code_references.h"
#include "schema/catalog.h"
#include "schema/files.h"
#include "store/work.h"

// A record form over 20,000 rows: opened, and moved from row to row as the keys do; a rename of a code that
// stands in 32,767 rows of every table that refers to it, in all files, beside the bare UPDATE statements in
// the same transactions on the same keyed files.
namespace {

using namespace Qt::StringLiterals;
using personnel::CodeKey;
using personnel::Referent;
using schema::File;

constexpr int kRows = 32767;

class Company {
  public:
    explicit Company(Referent referent) {
        company::createCompany(folder_.path(), u"計測"_s, {true, true});
        cn = company::openMainConnection(folder_.path(), u"計測"_s);
        for (const personnel::Reference& reference : personnel::codeReferences()) {
            if (reference.refersTo != referent || reference.table->lifetime == schema::Lifetime::Scratch)
                continue;
            columns[reference.table->file][reference.table->name]
                << reference.table->columns[size_t(reference.column)].name;
        }
        for (const auto& [file, tables] : columns) {
            const auto secondary = connectionTo(file);
            store::Connection& target = secondary ? *secondary : *cn;
            store::Work work(target);
            for (const auto& [table, names] : tables)
                target.execute(
                    u"insert into %1(%2) with recursive n(i) as (select 1 union all select i + 1 from n "
                    "where i < %3) select %4 from n"_s.arg(table, names.join(u','))
                        .arg(kRows)
                        .arg(QStringList(names.size(), u"'01'"_s).join(u',')));
            work.commit();
        }
    }
    /// A connection of its own for the companions' files; none for those behind the main one.
    std::unique_ptr<store::Connection> connectionTo(File file) const {
        if (file == File::Kihon || file == File::Syouyo) return nullptr;
        return std::make_unique<store::Connection>(schema::filePath(folder_.path(), u"計測"_s, file),
                                                   company::sharedKey());
    }
    personnel::CompanyDatabases databases() const { return {*cn, folder_.path(), u"計測"_s}; }

    std::unique_ptr<store::Connection> cn;
    std::map<File, std::map<QString, QStringList>> columns;

  private:
    QTemporaryDir folder_;
};

void update(store::Connection& cn, const std::map<QString, QStringList>& tables, const CodeKey& from,
            const CodeKey& to) {
    for (const auto& [table, names] : tables)
        for (const QString& name : names)
            cn.execute(u"update %1 set %2 = ? where %2 = ?"_s.arg(table, name), {to.code, from.code});
}

void bareStatements(Company& company, const CodeKey& from, const CodeKey& to) {
    company.cn->executeScript(u"BEGIN"_s);
    for (const auto& [file, tables] : company.columns) {
        const auto secondary = company.connectionTo(file);
        if (!secondary) {
            update(*company.cn, tables, from, to);
            continue;
        }
        store::Work work(*secondary);
        update(*secondary, tables, from, to);
        work.commit();
    }
    company.cn->executeScript(u"COMMIT"_s);
}

void BM_Rename(benchmark::State& state) {
    const auto referent = Referent(state.range(0));
    Company company(referent);
    CodeKey from{u"01"_s, {}}, to{u"02"_s, {}};
    for (auto _ : state) {
        if (state.range(1)) {
            bareStatements(company, from, to);
        } else {
            company.cn->executeScript(u"BEGIN"_s);
            personnel::renameCode(company.databases(), referent, from, to);
            company.cn->executeScript(u"COMMIT"_s);
        }
        std::swap(from, to);
    }
}
BENCHMARK(BM_Rename)
    ->ArgNames({"referent", "bare"})
    ->ArgsProduct({{int(Referent::Syain), int(Referent::SyainKubun), int(Referent::Jiyuu1)}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2);

/// An editor of 20,000 entries.
class LongList {
  public:
    LongList() {
        company::createCompany(folder_.path() + u"/Data"_s, u"計測"_s, {});
        global_.app_dir = folder_.path();
        global_.cn_main = company::openMainConnection(global_.dataDir(), u"計測"_s);
        global_.cn_main->execute(
            u"insert into 住宅区分マスタ with recursive n(i) as (select 1 union all select i + 1 from n "
            u"where "
            "i < 20000) select printf('%05d', i), '区分' from n"_s);
    }
    std::unique_ptr<masters::frmMasta> open() {
        auto form = std::make_unique<masters::frmMasta>(*kind_, house_, nullptr);
        form->show();
        QApplication::processEvents();
        return form;
    }

  private:
    QTemporaryDir folder_;
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    const masters::MasterKind* kind_ =
        &*std::find_if(masters::masterKinds().begin(), masters::masterKinds().end(),
                       [](const masters::MasterKind& kind) { return kind.referent == Referent::Jyutaku; });
};

void BM_RecordFormOpens(benchmark::State& state) {
    LongList list;
    for (auto _ : state) list.open();
}
BENCHMARK(BM_RecordFormOpens)->Unit(benchmark::kMillisecond);

void BM_RecordFormMoves(benchmark::State& state) {
    LongList list;
    const auto form = list.open();
    auto* next = form->findChild<QPushButton*>(u"cmdNext"_s);
    for (auto _ : state) {
        next->click();
        QApplication::processEvents();
    }
}
BENCHMARK(BM_RecordFormMoves)->Unit(benchmark::kMillisecond)->Iterations(2000);

}  // namespace
