#include "reports/report.h"

#include <algorithm>

#include "store/date_text.h"
#include "store/error.h"
#include "store/money.h"

namespace reports {

using store::Money;
using store::Value;

namespace {

/// What a cell shows instead of an amount that cannot be told: never a wrong number, never an error while
/// painting.
const QString kNoAmount = QStringLiteral("####");

bool isNumber(const Value& value) {
    return value.kind() == Value::Kind::Money || value.kind() == Value::Kind::Integer ||
           value.kind() == Value::Kind::Double;
}

QString formatted(const Value& value, Format format) {
    if (format == Format::Date && value.kind() == Value::Kind::Date) return store::formatDate(value.toDate());
    if (format != Format::Grouped || !isNumber(value)) return value.toText();
    try {
        return store::formatGrouped(value.toMoney());
    } catch (const store::Error&) {
        return kNoAmount;
    }
}

/// The mean to the nearest `unit` ten-thousandths, half away from zero, in one exact step.
Money mean(Money sum, int count, qint64 unit) {
    const qint64 divisor = count * unit;
    const qint64 rest = sum.raw() % divisor;
    qint64 units = sum.raw() / divisor;
    if (2 * std::abs(rest) >= divisor) units += sum.raw() < 0 ? -1 : 1;
    return Money::fromRaw(units * unit);
}

QString withTokens(const QString& caption, const QString& title, int page) {
    QString text;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QStringView token = QStringView(caption).mid(i, 2);
        if (token == u"%i")
            text += title;
        else if (token == u"%p")
            text += QString::number(page);
        else {
            text += caption[i];
            continue;
        }
        ++i;
    }
    return text;
}

}  // namespace

Report::Report(Design design) : design_(std::move(design)), data_(std::make_shared<Data>()) {}

void Report::setData(const store::Recordset& recordset) {
    auto data = std::make_shared<Data>();
    const int columns = recordset.fieldCount();
    for (int column = 0; column < columns; ++column) data->columns << recordset.fieldName(column);
    data->rows.reserve(static_cast<std::size_t>(recordset.recordCount()));
    for (int row = 0; row < recordset.recordCount(); ++row) {
        Row& values = data->rows.emplace_back();
        values.reserve(static_cast<std::size_t>(columns));
        for (int column = 0; column < columns; ++column) values.push_back(recordset.valueAt(row, column));
    }
    data_ = std::move(data);
}

void Report::setData(const QStringList& columns, std::vector<Row> rows) {
    data_ = std::make_shared<Data>(Data{columns, std::move(rows)});
}

Control& Report::control(Section section, const QString& name) {
    auto& controls = design_.band(section).controls;
    const auto found =
        std::find_if(controls.begin(), controls.end(), [&](const Control& c) { return c.name == name; });
    if (found == controls.end())
        qFatal("no control %s in %s", qUtf8Printable(name), qUtf8Printable(design_.name));
    return *found;
}

void Report::bind(Section section, const QString& name, const QString& column) {
    control(section, name).column = column;
}

void Report::setCaption(Section section, const QString& name, const QString& caption) {
    Control& label = control(section, name);
    label.caption = caption;
    label.captionSetAtRunTime = true;
}

void Report::setVisible(Section section, const QString& name, bool visible) {
    control(section, name).visibility = visible ? Visibility::Shown : Visibility::Hidden;
}

void Report::setLeft(Section section, const QString& name, int twips) {
    control(section, name).left = twips;
}
void Report::setWidth(Section section, const QString& name, int twips) {
    control(section, name).width = twips;
}

bool Report::isVisible(const Control& control) const {
    return control.visibility == Visibility::Shown ||
           (control.visibility == Visibility::WhenEmpty && data_->rows.empty());
}

int Report::bandHeight(Section section) const {
    if (section == Section::Section5 && data_->rows.empty()) return 0;
    const Band& band = design_.band(section);
    if (!band.canShrink) return band.height;
    int bottom = 0;
    int visibleBottom = 0;
    for (const Control& control : band.controls) {
        bottom = std::max(bottom, control.top + control.height);
        if (isVisible(control)) visibleBottom = std::max(visibleBottom, control.top + control.height);
    }
    return band.height - (bottom - visibleBottom);
}

const Value& Report::valueOf(const Control& control, int row) const {
    static const Value null;
    if (control.column.isEmpty() || row >= rowCount()) return null;
    const auto column = data_->columns.indexOf(control.column);
    Q_ASSERT_X(column >= 0, "Report", "a control is bound to a column that the data do not have");
    const Row& values = data_->rows.at(static_cast<std::size_t>(row));
    return column < 0 ? null : values.at(static_cast<std::size_t>(column));
}

QString Report::functionText(const Control& control) const {
    Money sum;
    int count = 0;
    try {
        for (int row = 0; row < rowCount(); ++row) {
            const Value& value = valueOf(control, row);
            if (value.isNull()) continue;
            sum += value.toMoney();
            ++count;
        }
    } catch (const store::Error&) {
        return kNoAmount;
    }
    if (count == 0) return {};
    if (control.kind == ControlKind::Average)
        sum = mean(sum, count, control.format == Format::Grouped ? Money::kScale : 1);
    return formatted(sum, control.format);
}

QString Report::textOf(const Control& control, int row, int page) const {
    switch (control.kind) {
        case ControlKind::Label:
            return control.captionSetAtRunTime ? control.caption : withTokens(control.caption, title_, page);
        case ControlKind::Text:
            return formatted(valueOf(control, row), control.format);
        case ControlKind::Sum:
        case ControlKind::Average:
            return functionText(control);
        case ControlKind::Line:
            break;
    }
    return {};
}

Pagination::Pagination(const Report& report) : rows_(report.rowCount()) {
    const int detail = std::max(1, report.bandHeight(Section::Section1));
    const int roomOnOther = paperHeight(report.design().paper) - 2 * kVerticalMargin -
                            report.bandHeight(Section::Section2) - report.bandHeight(Section::Section3);
    const int roomOnFirst = roomOnOther - report.bandHeight(Section::Section4);
    onFirst_ = std::max(0, roomOnFirst / detail);
    onOther_ = std::max(1, roomOnOther / detail);

    int onLast = rows_;
    int roomOnLast = roomOnFirst;
    if (rows_ > onFirst_) {
        const int rest = rows_ - onFirst_;
        const int further = (rest + onOther_ - 1) / onOther_;
        pageCount_ = 1 + further;
        onLast = rest - (further - 1) * onOther_;
        roomOnLast = roomOnOther;
    }
    if (onLast * detail + report.bandHeight(Section::Section5) > roomOnLast && onLast > 0) ++pageCount_;
}

Pagination::Page Pagination::page(int number) const {
    Page page;
    page.firstRow = number == 1 ? 0 : std::min(rows_, onFirst_ + (number - 2) * onOther_);
    page.rowCount = std::min(rows_ - page.firstRow, number == 1 ? onFirst_ : onOther_);
    page.reportHeader = number == 1;
    page.reportFooter = number == pageCount_;
    return page;
}

}  // namespace reports
