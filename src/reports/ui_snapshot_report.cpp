#include "reports/ui_snapshot_report.h"

#include <QString>

#include "forms/global_record.h"
#include "forms/screens.h"
#include "reports/designs.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"

namespace reports {

QDialog* previewSnapshotDates(forms::House& house, QWidget* parent) {
    constexpr int kRuleWidth = 9000;
    Report report = makeReport(QStringLiteral("DataReportHData"));
    report.setTitle(QStringLiteral("配分実行 人事データ取込年月日"));
    report.setData(house.global.cn_main->query(
        QStringLiteral("select * from Sデータ取込年月日運用 Order by CDate(基準日)")));
    const struct {
        const char16_t* field;
        const char16_t* label;
        const char16_t* column;
    } columns[] = {{u"Text1", u"Label1", u"基準日"},
                   {u"Text2", u"Label2", u"年齢算出年月日"},
                   {u"Text3", u"Label3", u"勤続年数算出年月日"},
                   {u"Text5", u"Label8", u"賞与の内容"}};
    for (const auto& [field, label, column] : columns) {
        report.bind(Section::Section1, QString::fromUtf16(field), QString::fromUtf16(column));
        report.setCaption(Section::Section2, QString::fromUtf16(label), QString::fromUtf16(column));
    }
    report.setWidth(Section::Section2, QStringLiteral("Line1"), kRuleWidth);
    report.setWidth(Section::Section1, QStringLiteral("Line2"), kRuleWidth);
    report.setCaption(Section::Section4, QStringLiteral("Label4"),
                      QStringLiteral("《配分実行》人事データ取込年月日"));
    report.setCaption(Section::Section4, QStringLiteral("Label6"), house.global.panels.company);
    return new frmReport(std::move(report),
                         titleOfCompany(house.global, QStringLiteral("人事データ取込年月日")), parent);
}

}  // namespace reports
