#include "masters/master_report.h"

#include "reports/designs.h"
#include "schema/catalog.h"
#include "store/work.h"

namespace masters {
namespace {

using reports::Report;
using reports::Section;

/// What stands in one column of the print: its heading and the column of the data.
struct Printed {
    QString heading;
    QString column;
};

Report reportOf(const QString& design, const QString& title, const QString& company,
                const store::Recordset& rows, const std::vector<Printed>& columns) {
    Report report = reports::makeReport(design);
    report.setTitle(title);
    report.setData(rows);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::size_t label = i < 3 ? i + 1 : i + 4;  // Label4 to Label6 stand in other bands
        report.bind(Section::Section1, QStringLiteral("Text%1").arg(i + 1), columns[i].column);
        report.setCaption(Section::Section2, QStringLiteral("Label%1").arg(label), columns[i].heading);
    }
    report.setCaption(Section::Section4, QStringLiteral("Label4"), title);
    report.setCaption(Section::Section4, QStringLiteral("Label6"), company);
    return report;
}

QString selectOf(const MasterKind& kind) {
    QStringList columns{kind.column(kind.code), kind.nameColumn()};
    for (const int position : {kind.date, kind.age})
        if (position >= 0) columns << kind.column(position);
    return QStringLiteral("select %1 from %2 Order by CodeKey(Code)")
        .arg(columns.join(u','), kind.tableName());
}

/// Sections under the name of their department. A section whose department is gone does not print.
Report sectionReport(store::Connection& cn, const QString& title, const QString& company) {
    const QString scratch = QStringLiteral("jsyozoku");
    const QString drop = QStringLiteral("DROP TABLE IF EXISTS main.") + scratch;
    store::Work work(cn);
    cn.execute(drop);
    for (const QString& statement : schema::createStatements(schema::tableNamed(scratch)))
        cn.execute(statement);
    cn.execute(QStringLiteral(
        "INSERT INTO jsyozoku select 所属大マスタ.所属大,所属小マスタ.Code,所属小マスタ.所属小,"
        "所属小マスタ.設定年月日 from 所属小マスタ INNER JOIN 所属大マスタ ON 所属小マスタ.所属大 = "
        "所属大マスタ.Code Order by CodeKey(所属大マスタ.Code),CodeKey(所属小マスタ.Code)"));
    const auto rows = cn.query(QStringLiteral("select * from jsyozoku order by rowid"));
    cn.execute(drop);
    work.commit();
    std::vector<Printed> columns;
    for (int i = 0; i < rows.fieldCount(); ++i) columns.push_back({rows.fieldName(i), rows.fieldName(i)});
    return reportOf(QStringLiteral("DataReportFtype"), title, company, rows, columns);
}

Report relationReport(store::Connection& cn, const QString& title, const QString& company) {
    constexpr int kGroupLeft = 5102;
    const auto rows = cn.query(QStringLiteral(
        "select 続柄マスタ.Code,続柄マスタ.続柄,続柄マスタ.続柄グループ AS 続柄G,"
        "続柄グループマスタ.続柄グループ from 続柄マスタ left join 続柄グループマスタ on "
        "続柄マスタ.続柄グループ = 続柄グループマスタ.Code Order by CodeKey(続柄マスタ.Code)"));
    const QString group = QStringLiteral("続柄グループ");
    const QString name = QStringLiteral("続柄");
    Report report =
        reportOf(QStringLiteral("DataReportDtype"), title, company, rows,
                 {{QStringLiteral("Code"), QStringLiteral("Code")}, {name, name}, {group, group}});
    const int width = report.design().width - kGroupLeft;
    report.setLeft(Section::Section1, QStringLiteral("Text3"), kGroupLeft);
    report.setWidth(Section::Section1, QStringLiteral("Text3"), width);
    report.setLeft(Section::Section2, QStringLiteral("Label3"), kGroupLeft);
    report.setWidth(Section::Section2, QStringLiteral("Label3"), width);
    return report;
}

}  // namespace

Report makeMasterReport(store::Connection& cn, const MasterKind& kind, const QString& company) {
    const QString caption = captionOf(kind, attributeNames(cn));
    if (kind.underOther) return sectionReport(cn, caption, company);
    if (kind.other >= 0) return relationReport(cn, caption, company);
    const auto rows = cn.query(selectOf(kind));
    std::vector<Printed> columns;
    for (int i = 0; i < rows.fieldCount(); ++i) columns.push_back({rows.fieldName(i), rows.fieldName(i)});
    columns[1].heading = caption;
    const QString design = kind.date >= 0  ? QStringLiteral("DataReportAtype")
                           : kind.age >= 0 ? QStringLiteral("DataReportDtype")
                                           : QStringLiteral("DataReportBtype");
    return reportOf(design, caption, company, rows, columns);
}

}  // namespace masters
