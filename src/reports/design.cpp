#include "reports/design.h"

namespace reports {

namespace {
constexpr int kA4Short = 11906;
constexpr int kA4Long = 16838;
}  // namespace

int paperWidth(Paper paper) {
    return paper == Paper::A4Portrait ? kA4Short : kA4Long;
}
int paperHeight(Paper paper) {
    return paper == Paper::A4Portrait ? kA4Long : kA4Short;
}

}  // namespace reports
