#include "reports/ui_list_title.h"

#include "forms/global_record.h"
#include "store/date_text.h"

namespace reports {

ListTitle titleOfCompany(const forms::GlobalRecord& global, const QString& list) {
    return {global.panels.company, {}, {}, list, global.clock()};
}

ListTitle titleOfRun(const forms::GlobalRecord& global, const QString& list) {
    ListTitle title = titleOfCompany(global, list);
    title.kijunbi = {store::requireDate(global.kijunbi)};
    title.subject = global.haibun_kubun_mei + u'／' + global.haibun_kijun_mei;
    return title;
}

}  // namespace reports
