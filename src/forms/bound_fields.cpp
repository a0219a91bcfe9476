#include "forms/bound_fields.h"

#include <QCheckBox>
#include <QLineEdit>
#include <algorithm>
#include <memory>

#include "domain/number_rule.h"
#include "forms/box.h"
#include "store/value.h"
#include "widgets/code_combo.h"
#include "widgets/key_filter.h"
#include "widgets/option_row.h"
#include "widgets/theme.h"

namespace forms {

BoundField boundField(QLineEdit* edit, const QString& column) {
    return {.control = edit,
            .column = column,
            .read = [edit] { return edit->text(); },
            .write = [edit](const QString& text) { edit->setText(text); },
            .lock = [edit](bool locked) { edit->setReadOnly(locked); }};
}

BoundField boundNumber(QLineEdit* edit, const QString& column) {
    edit->setAlignment(Qt::AlignRight);
    widgets::typeDirectly(edit);
    BoundField field = boundField(edit, column);
    field.read = [edit] { return domain::withoutSeparators(edit->text()); };
    field.write = [edit](const QString& stored) { edit->setText(domain::withSeparators(stored)); };
    return field;
}

BoundField boundField(widgets::CodeCombo* combo, const QString& column) {
    return {.control = combo,
            .column = column,
            .read = [combo] { return combo->code(); },
            .write = [combo](const QString& code) { combo->setCode(code); },
            .lock = [combo](bool locked) { combo->setLocked(locked); }};
}

BoundField boundField(widgets::OptionRow* options, const QString& column) {
    return {.control = options,
            .column = column,
            .read = [options] { return options->code(); },
            .write = [options](const QString& code) { options->setCode(code); },
            .lock = [options](bool locked) { options->setLocked(locked); },
            .fresh = QStringLiteral("1")};
}

/// A flag that nobody set is shown as not checked and stays unset until it is.
BoundField boundField(QCheckBox* box, const QString& column) {
    const QString yes = store::Value(true).toText(), no = store::Value(false).toText();
    const auto stored = std::make_shared<QString>();
    return {.control = box,
            .column = column,
            .read = [=] { return box->isChecked() ? yes
                                 : *stored == yes ? no
                                                  : *stored; },
            .write =
                [=](const QString& text) {
                    *stored = text;
                    box->setChecked(text == yes);
                },
            .lock = [box](bool locked) { box->setEnabled(!locked); },
            .fresh = no};
}

void BoundFields::add(BoundField field) {
    field.lock(true);
    fields_.push_back(std::move(field));
}

void BoundFields::setLocked(bool locked) {
    for (const BoundField& field : fields_) field.lock(locked || !field.entered);
}

void BoundFields::setEntered(QWidget* control, bool entered, bool locked) {
    for (BoundField& field : fields_) {
        if (field.control != control) continue;
        field.entered = entered;
        field.lock(locked || !entered);
    }
}

bool BoundFields::isEntered(const QWidget* control) const {
    return std::all_of(begin(), end(),
                       [&](const BoundField& field) { return field.control != control || field.entered; });
}

void BoundFields::focusFirst() const {
    const auto first = std::find_if(begin(), end(), [](const BoundField& field) { return field.entered; });
    if (first != end()) first->control->setFocus(Qt::OtherFocusReason);
}

void BoundFields::remember() {
    remembered_.clear();
    for (const BoundField& field : fields_) remembered_ << field.read();
}

bool BoundFields::changed() const {
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (fields_[i].entered && fields_[i].read() != remembered_.value(qsizetype(i))) return true;
    return false;
}

bool BoundFields::passChecks() const {
    for (const BoundField& field : fields_) {
        if (!field.check || !field.entered || field.check()) continue;
        field.control->setFocus(Qt::OtherFocusReason);
        return false;
    }
    return true;
}

QStringList BoundFields::markFaults() const {
    QStringList names;
    for (const BoundField& field : fields_) {
        if (!field.check || !field.entered) continue;
        const HeldBoxes held;
        if (field.check()) continue;
        widgets::setFaulty(field.control, true);
        if (!held.boxes().empty()) field.control->setToolTip(held.boxes().front().text);
        names << field.control->accessibleName();
    }
    return names;
}

void BoundFields::clearFaults() const {
    for (const BoundField& field : fields_) {
        if (!widgets::isFaulty(field.control)) continue;
        widgets::setFaulty(field.control, false);
        field.control->setToolTip({});
    }
}

}  // namespace forms
