#include "company/key.h"

namespace company {

store::Key sharedKey() {
    return store::Key(QStringLiteral("suzumeiro"));
}

}  // namespace company
