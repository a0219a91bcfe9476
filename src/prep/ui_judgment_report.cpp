#include "prep/ui_judgment_report.h"

#include "forms/global_record.h"
#include "reports/designs.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"

namespace prep {

using reports::Section;

QDialog* judgmentPreview(const store::Recordset& rows, const std::vector<JudgmentColumn>& columns,
                         const forms::GlobalRecord& global, QWidget* parent) {
    constexpr int kFirstItem = 3;  // after 社員Code and 氏名
    const QString title = QStringLiteral("自動入力判定");
    reports::Report report = reports::makeReport(QStringLiteral("DataReportSHyou02"));
    report.setTitle(title);
    report.setData(rows);
    report.bind(Section::Section1, QStringLiteral("Text1"), QStringLiteral("社員Code"));
    report.bind(Section::Section1, QStringLiteral("Text2"), QStringLiteral("氏名"));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int number = kFirstItem + static_cast<int>(i);
        report.bind(Section::Section1, QStringLiteral("Text%1").arg(number), columns[i].column);
        report.setCaption(Section::Section2, reports::headingOfSHyou02(number), columns[i].heading);
    }
    report.setCaption(Section::Section4, QStringLiteral("Label4"), title);
    report.setCaption(Section::Section4, QStringLiteral("Label6"),
                      QStringLiteral("◆%1／%2").arg(global.haibun_kubun_mei, global.haibun_kijun_mei));
    return new reports::frmReport(std::move(report), reports::titleOfRun(global, title), parent);
}

}  // namespace prep
