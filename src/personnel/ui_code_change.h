#pragma once
#include "personnel/code_change.h"

class QWidget;

namespace forms {
struct House;
}

namespace personnel {

/// At the opening of a company: asks what becomes of a change of a code that was cut off, and does it.
void askCutOffChange(forms::House& house, QWidget* parent);
/// Behind a change that failed and was taken back: what the companions' files keep of it, if anything.
void tellCutOffChange(const CompanyDatabases& company, QWidget* parent);

}  // namespace personnel
