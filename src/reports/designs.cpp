#include "reports/designs.h"

#include <QHash>
#include <utility>

namespace reports {

namespace {

constexpr int kFullWidth = 10206;  // 180 mm: A4 portrait with side margins of 15 mm
constexpr int kRowHeight = 340;
constexpr int kTextHeight = kRowHeight - 10;  // above the rule under a row
constexpr int kHeadingHeight = 420;
constexpr int kFooterHeight = 480;
constexpr int kNumberRoom = 400;  // half of what "- 999 -" takes

/// A column of a list: its heading in Section2 and its field in Section1.
struct ListColumn {
    QString label;
    QString heading;
    QString field;
    int width;
    Align align = Align::Left;
    Format format = Format::Plain;
};

Control label(const QString& name, const QString& caption, int top, int height, int width, Style style) {
    Control control;
    control.name = name;
    control.caption = caption;
    control.top = top;
    control.height = height;
    control.width = width;
    control.style = style;
    return control;
}

Control rule(const QString& name, int top, int width, Style style) {
    Control control;
    control.kind = ControlKind::Line;
    control.name = name;
    control.top = top;
    control.width = width;
    control.style = style;
    return control;
}

/// Title, subtitle and notice; the page's number. The same for every list.
void addFrame(Design& design, const QString& noticeLabel,
              const QString& pageLabel = QStringLiteral("Label5")) {
    Band& header = design.band(Section::Section4);
    header.height = noticeLabel.isEmpty() ? 920 : 1300;
    header.canShrink = true;
    header.controls = {
        label(QStringLiteral("Label4"), QStringLiteral("%i"), 0, 500, design.width, Style::Title),
        label(QStringLiteral("Label6"), QString(), 500, 340, design.width, Style::Subtitle)};
    if (!noticeLabel.isEmpty()) {
        Control notice =
            label(noticeLabel, QStringLiteral("該当者はいません。"), 880, 340, design.width, Style::Notice);
        notice.visibility = Visibility::WhenEmpty;
        header.controls.push_back(notice);
    }
    Band& footer = design.band(Section::Section3);
    footer.height = kFooterHeight;
    const int side = design.width / 2 - kNumberRoom;
    Control number = label(pageLabel, QStringLiteral("- %p -"), 180, 300, 2 * kNumberRoom, Style::Footer);
    number.left = side;
    number.align = Align::Center;
    // Beside the page's number, so that no page has a row less.
    Control origin = label(kOriginLabel, QString(), 180, 300, side, Style::Footer);
    origin.left = side + 2 * kNumberRoom;
    origin.align = Align::Right;
    footer.controls = {number, origin};
}

/// Headings over fields, side by side from the left; Line1 under the headings, Line2 under each row.
void addColumns(Design& design, const std::vector<ListColumn>& columns, int ruleWidth) {
    Band& headings = design.band(Section::Section2);
    headings.height = kHeadingHeight;
    Band& detail = design.band(Section::Section1);
    detail.height = kRowHeight;
    int left = 0;
    for (const ListColumn& column : columns) {
        Control heading =
            label(column.label, column.heading, 0, kHeadingHeight - 20, column.width, Style::Heading);
        heading.left = left;
        heading.align = column.align;
        headings.controls.push_back(heading);
        Control field = label(column.field, QString(), 0, kTextHeight, column.width, Style::Body);
        field.kind = ControlKind::Text;
        field.left = left;
        field.align = column.align;
        field.format = column.format;
        detail.controls.push_back(field);
        left += column.width;
    }
    Q_ASSERT(left <= design.width);
    headings.controls.push_back(
        rule(QStringLiteral("Line1"), kHeadingHeight - 20, ruleWidth, Style::Heading));
    detail.controls.push_back(rule(QStringLiteral("Line2"), kTextHeight, ruleWidth, Style::Body));
}

/// One row of functions Function<first>, … under columns that begin at `left`.
void addFunctions(Band& band, ControlKind kind, int first, int count, int left, int width, int top) {
    for (int i = 0; i < count; ++i) {
        Control function = label(QStringLiteral("Function%1").arg(first + i), QString(), top, kRowHeight,
                                 width, Style::Total);
        function.kind = kind;
        function.left = left + i * width;
        function.align = Align::Right;
        function.format = Format::Grouped;
        band.controls.push_back(function);
    }
}

/// A list of amounts: code, name, five money columns with their totals and averages.
Design dataReportSHyou03() {
    constexpr int kCode = 1000;
    constexpr int kName = 2106;
    constexpr int kAmount = 1420;
    constexpr int kAmounts = 5;
    Design design;
    design.width = kFullWidth;
    addFrame(design, QStringLiteral("Label9"));
    const auto amount = [&](const char16_t* labelName, const char16_t* heading, const char16_t* field) {
        return ListColumn{QString::fromUtf16(labelName),
                          QString::fromUtf16(heading),
                          QString::fromUtf16(field),
                          kAmount,
                          Align::Right,
                          Format::Grouped};
    };
    addColumns(design,
               {{QStringLiteral("Label1"), QStringLiteral("社員Code"), QStringLiteral("Text1"), kCode},
                {QStringLiteral("Label2"), QStringLiteral("氏名"), QStringLiteral("Text2"), kName},
                amount(u"Label3", u"個人別計算", u"Text3"),
                amount(u"Label7", u"総額配分", u"Text4"),
                amount(u"Label8", u"金一封", u"Text5"),
                amount(u"Label10", u"特別加算金", u"Text6"),
                amount(u"Label11", u"合計", u"Text7")},
               kFullWidth);
    constexpr int kSumTop = 60;
    constexpr int kAverageTop = kSumTop + kRowHeight;
    Band& totals = design.band(Section::Section5);
    totals.height = kAverageTop + kRowHeight + 40;
    totals.controls = {rule(QStringLiteral("Line3"), 20, kFullWidth, Style::Heading),
                       label(QStringLiteral("Label12"), QStringLiteral("【合計】"), kSumTop, kRowHeight,
                             kCode + kName, Style::Total),
                       label(QStringLiteral("Label13"), QStringLiteral("【平均】"), kAverageTop, kRowHeight,
                             kCode + kName, Style::Total)};
    addFunctions(totals, ControlKind::Sum, 1, kAmounts, kCode + kName, kAmount, kSumTop);
    addFunctions(totals, ControlKind::Average, 1 + kAmounts, kAmounts, kCode + kName, kAmount, kAverageTop);
    totals.controls.push_back(rule(QStringLiteral("Line4"), totals.height - 20, kFullWidth, Style::Heading));
    return design;
}

/// A spare list of six columns: the print that takes it sets headings and bindings.
Design dataReportSHyou01() {
    constexpr int kColumn = kFullWidth / 6;
    Design design;
    design.width = kFullWidth;
    addFrame(design, QStringLiteral("Label9"));
    std::vector<ListColumn> columns;
    for (const char16_t* name : {u"Label1", u"Label2", u"Label3", u"Label7", u"Label8", u"Label10"}) {
        const QString field = QStringLiteral("Text%1").arg(columns.size() + 1);
        columns.push_back({QString::fromUtf16(name), QString(), field, kColumn});
    }
    addColumns(design, columns, kFullWidth);
    return design;
}

/// Headings wider than their columns: in two lines by turns, each centred over its column.
void staggerHeadings(Design& design, std::size_t first, int columnWidth) {
    constexpr int kLine = 300;
    Band& headings = design.band(Section::Section2);
    headings.height = 2 * kLine + 20;
    for (std::size_t i = 0; i < headings.controls.size(); ++i) {
        Control& control = headings.controls[i];
        if (control.kind == ControlKind::Line) {
            control.top = headings.height - 20;
            continue;
        }
        control.height = kLine;
        control.top = i < first || (i - first) % 2 == 1 ? kLine : 0;
        if (i < first) continue;
        control.left -= columnWidth / 2;
        control.width = 2 * columnWidth;
    }
}

/// The judgments of automatic input: code, name, a mark for each of the 17 items.
Design dataReportSHyou02() {
    constexpr int kCode = 900;
    constexpr int kName = 1800;
    constexpr int kMark = 710;
    const char16_t* const captions[] = {
        u"    基礎額Ａ", u"    基礎額Ｂ", u"    年齢係数", u"勤続年数係数", u"    等級係数", u"    評価係数",
        u"社員区分係数", u"  所属大係数", u"    役職係数", u"    職種係数", u"  コース係数", u" 自由1係数",
        u" 自由2係数",   u" 自由3係数",   u" 自由4係数",   u" 自由5係数",   u"    支給係数"};
    constexpr int kMarks = static_cast<int>(std::size(captions));
    Design design;
    design.paper = Paper::A4Landscape;
    design.width = kCode + kName + kMarks * kMark + kMark / 2;  // the last heading reaches beyond its column
    addFrame(design, QStringLiteral("Label9"), QStringLiteral("Label3"));
    std::vector<ListColumn> columns = {
        {QStringLiteral("Label1"), QStringLiteral("社員Code"), QStringLiteral("Text1"), kCode},
        {QStringLiteral("Label2"), QStringLiteral("氏名"), QStringLiteral("Text2"), kName}};
    for (int i = 0; i < kMarks; ++i)
        columns.push_back({headingOfSHyou02(3 + i), QString::fromUtf16(captions[i]),
                           QStringLiteral("Text%1").arg(3 + i), kMark, Align::Center});
    addColumns(design, columns, design.width);
    staggerHeadings(design, 2, kMark);
    return design;
}

/// The list of snapshots: three dates and, where the print uses it, a text.
Design dataReportHData() {
    constexpr int kDates[] = {1250, 1500, 1850};
    constexpr int kText = 4400;
    constexpr int kRuleWithoutText = kDates[0] + kDates[1] + kDates[2];
    Design design;
    design.width = kRuleWithoutText + kText;
    addFrame(design, QString());
    const auto date = [&](int number, const char16_t* heading) {
        return ListColumn{QStringLiteral("Label%1").arg(number),
                          QString::fromUtf16(heading),
                          QStringLiteral("Text%1").arg(number),
                          kDates[number - 1],
                          Align::Left,
                          Format::Date};
    };
    addColumns(design,
               {date(1, u"基準日"),
                date(2, u"年齢算出年月日"),
                date(3, u"勤続年数算出年月日"),
                {QStringLiteral("Label8"), QString(), QStringLiteral("Text5"), kText}},
               kRuleWithoutText);
    return design;
}

/// A text, its heading and its width in a list of people or codes. Heading labels are numbered past those of
/// the other bands.
struct PersonColumn {
    int text;
    int label;
    const char16_t* heading;
    int width;
    Format format = Format::Plain;
};

Design personList(Paper paper, const std::vector<PersonColumn>& columns, const QString& pageLabel) {
    Design design;
    design.paper = paper;
    std::vector<ListColumn> list;
    for (const PersonColumn& column : columns) {
        list.push_back({QStringLiteral("Label%1").arg(column.label), QString::fromUtf16(column.heading),
                        QStringLiteral("Text%1").arg(column.text), column.width, Align::Left, column.format});
        design.width += column.width;
    }
    addFrame(design, QString(), pageLabel);
    addColumns(design, list, design.width);
    return design;
}

/// The staff register: who, born and joined (or left) when, and the position in force, over a line with the
/// date on every page.
Design dataReportJShain() {
    constexpr int kName = 1650;
    constexpr int kDate = 1150;
    constexpr int kPosition = 1366;
    Design design = personList(Paper::A4Landscape,
                               {{1, 1, u"社員Code", 800},
                                {3, 3, u"氏名", kName},
                                {2, 2, u"フリガナ", kName},
                                {11, 12, u"性別", 520},
                                {4, 5, u"生年月日", kDate, Format::Date},
                                {5, 6, u"入社日", kDate, Format::Date},
                                {6, 7, u"社員区分", kPosition},
                                {12, 13, u"所属大", kPosition},
                                {9, 10, u"所属小", kPosition},
                                {7, 8, u"役職", kPosition},
                                {8, 9, u"職種", kPosition},
                                {10, 11, u"コース", kPosition}},
                               QStringLiteral("Label14"));
    std::vector<Control>& header = design.band(Section::Section4).controls;
    header.back().name = QStringLiteral("Label15");
    header.push_back(header.back());
    header.back().name = QStringLiteral("Label16");
    header.back().align = Align::Right;
    std::vector<Control>& footer = design.band(Section::Section3).controls;
    footer.push_back(footer.front());
    footer.back().name = QStringLiteral("Label17");
    footer.back().width = std::exchange(footer.back().left, 0);
    footer.back().caption.clear();
    footer.back().align = Align::Left;
    return design;
}

/// Families, a line a relative.
Design dataReportJkazoku() {
    return personList(Paper::A4Landscape,
                      {{1, 1, u"社員Code", 1000},
                       {6, 8, u"氏名", 2200},
                       {7, 9, u"家族氏名", 2200},
                       {2, 2, u"フリガナ", 2200},
                       {3, 3, u"続柄", 1700},
                       {10, 12, u"性別", 800},
                       {4, 7, u"生年月日", 1300, Format::Date},
                       {8, 10, u"扶養", 1000},
                       {5, 13, u"同居", 900},
                       {9, 11, u"障害", 900}},
                      QStringLiteral("Label5"));
}

/// Qualifications, a line each.
Design dataReportJshikaku() {
    return personList(Paper::A4Portrait,
                      {{1, 1, u"社員Code", 1100},
                       {2, 2, u"氏名", 2500},
                       {3, 3, u"資格・免許", 3106},
                       {4, 7, u"業務必要性", 1600},
                       {5, 8, u"取得年月日", 1900, Format::Date}},
                      QStringLiteral("Label5"));
}

/// The list of a code master: codes, names and, where the master has one, a third column. The last design
/// stands under the name of a parent, printed once a page.
constexpr int kMasterCode = 1134;
constexpr int kMasterName = 3402;
constexpr int kMasterDate = 1700;
Design dataReportAtype() {
    return personList(Paper::A4Portrait,
                      {{1, 1, u"Code", kMasterCode},
                       {2, 2, u"", kMasterName},
                       {3, 3, u"設定年月日", kMasterDate, Format::Date}},
                      QStringLiteral("Label5"));
}
Design dataReportBtype() {
    return personList(Paper::A4Portrait, {{1, 1, u"Code", kMasterCode}, {2, 2, u"", kMasterName}},
                      QStringLiteral("Label5"));
}
Design dataReportDtype() {
    return personList(Paper::A4Portrait,
                      {{1, 1, u"Code", kMasterCode}, {2, 2, u"", kMasterName}, {3, 3, u"", kMasterName}},
                      QStringLiteral("Label5"));
}
Design dataReportFtype() {
    Design design = personList(Paper::A4Portrait,
                               {{1, 1, u"所属大", kMasterName},
                                {2, 2, u"Code", kMasterCode},
                                {3, 3, u"所属小", kMasterName},
                                {4, 7, u"設定年月日", kMasterDate, Format::Date}},
                               QStringLiteral("Label5"));
    design.band(Section::Section1).controls.front().hideRepeated = true;
    return design;
}

using Maker = Design (*)();
const QHash<QString, Maker>& makers() {
    static const QHash<QString, Maker> table = {{QStringLiteral("DataReportSHyou01"), dataReportSHyou01},
                                                {QStringLiteral("DataReportSHyou02"), dataReportSHyou02},
                                                {QStringLiteral("DataReportSHyou03"), dataReportSHyou03},
                                                {QStringLiteral("DataReportHData"), dataReportHData},
                                                {QStringLiteral("DataReportAtype"), dataReportAtype},
                                                {QStringLiteral("DataReportBtype"), dataReportBtype},
                                                {QStringLiteral("DataReportDtype"), dataReportDtype},
                                                {QStringLiteral("DataReportFtype"), dataReportFtype},
                                                {QStringLiteral("DataReportJShain"), dataReportJShain},
                                                {QStringLiteral("DataReportJkazoku"), dataReportJkazoku},
                                                {QStringLiteral("DataReportJshikaku"), dataReportJshikaku}};
    return table;
}

}  // namespace

Design designNamed(const QString& name) {
    const Maker maker = makers().value(name);
    if (!maker) qFatal("no report design %s", qUtf8Printable(name));
    Design design = maker();
    design.name = name;
    return design;
}

QString headingOfSHyou02(int number) {
    // Label3 to Label6 and Label9 stand in other bands.
    const int label = number < 3 ? number : number < 5 ? number + 4 : number + 5;
    return QStringLiteral("Label%1").arg(label);
}

Report makeReport(const QString& designName) {
    return Report(designNamed(designName));
}

}  // namespace reports
