#include "personnel/ui_person_output.h"

#include "reports/designs.h"
#include "reports/frmReport.h"
#include "store/date_text.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using reports::Report;
using reports::Section;

/// The column behind Text1, Text2, … of a design.
QStringList boundColumns(PersonList list) {
    switch (list) {
        case PersonList::Family:
            return {u"社員Code"_s, u"家族フリガナ"_s, u"続柄"_s, u"生年月日"_s, u"同居"_s,
                    u"氏名"_s,     u"家族氏名"_s,     u"扶養"_s, u"障害"_s,     u"性別"_s};
        case PersonList::Qualifications:
            return {u"社員Code"_s, u"氏名"_s, u"資格・免許"_s, u"業務必要性"_s, u"取得年月日"_s};
        default:
            return {u"社員Code"_s,
                    u"フリガナ"_s,
                    u"氏名"_s,
                    u"生年月日"_s,
                    list == PersonList::Retired ? u"退職日"_s : u"入社日"_s,
                    u"社員区分名"_s,
                    u"役職名"_s,
                    u"職種名"_s,
                    u"所属小名"_s,
                    u"コース名"_s,
                    u"性別"_s,
                    u"所属大名"_s};
    }
}

QString designOf(PersonList list) {
    if (list == PersonList::Family) return u"DataReportJkazoku"_s;
    return list == PersonList::Qualifications ? u"DataReportJshikaku"_s : u"DataReportJShain"_s;
}

}  // namespace

QString dateLine(QDate date) {
    return u"基準日："_s + store::formatLongDate(date);
}

reports::frmReport* personPreview(PersonList list, const store::Recordset& rows, const PrintHeads& heads,
                                  QWidget* parent) {
    Report report = reports::makeReport(designOf(list));
    report.setTitle(heads.title.list);
    report.setData(rows);
    int number = 0;
    for (const QString& column : boundColumns(list))
        report.bind(Section::Section1, u"Text%1"_s.arg(++number), column);
    report.setCaption(Section::Section4, u"Label4"_s, heads.title.list);
    if (showsPosition(list)) {
        if (list == PersonList::Retired) report.setCaption(Section::Section2, u"Label6"_s, u"退職日"_s);
        report.setCaption(Section::Section4, u"Label15"_s, heads.dateLine);
        report.setCaption(Section::Section4, u"Label16"_s, heads.title.company);
        report.setCaption(Section::Section3, u"Label17"_s, heads.dateLine);
    } else {
        report.setCaption(Section::Section4, u"Label6"_s, heads.title.company + u"　"_s + heads.dateLine);
    }
    return new reports::frmReport(std::move(report), heads.title, parent);
}

}  // namespace personnel
