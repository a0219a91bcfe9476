#pragma once
#include <QDir>
#include <QString>
#include <array>
#include <memory>

#include "company/instance_lock.h"
#include "company/places.h"
#include "domain/clock.h"
#include "store/connection.h"

namespace forms {

/// The text that the first panel shows while no company is open.
inline const QString kNoCompanyPrompt = QStringLiteral("処理する会社を指定してください");

/// The texts of frmMain's status bar. They are state: whether a company is open is told by the first panel
/// alone.
struct Panels {
    QString company = kNoCompanyPrompt;  ///< Panels(1): the registered 会社名, or the prompt
    QString run;                         ///< Panels(2): the run's date or the selection
    QString folder;                      ///< Panels(3): the chosen company folder
};

/// The process-wide state that the screens share. One object, made in main, handed to screens by reference,
/// never saved, never reached from logic. Dates are text yyyy/m/d.
struct GlobalRecord {
    // Connections and company
    QString app_dir;
    /// Keeps other processes out of the company; held exactly as long as cn_main is open (and so outlives
    /// it).
    std::unique_ptr<company::CompanyLock> company_lock;
    std::unique_ptr<store::Connection> cn_main;
    QString link_error_text;
    bool link_chingin_pass = false;
    bool link_kihon_pass = false;
    QString kaisha_folder;
    std::array<bool, 6> databases_present{};  ///< which files of kaisha_folder the compaction works on
    QString help_bunya;

    // Personnel screens
    QString syain_code;
    QString syozoku_dai_code;
    QString syain_mei;
    QString syain_nyuusyabi;
    QString syain_seinengappi;
    bool rireki_shinki = false;
    bool rireki_zenin = false;
    bool jinji_mode_joukenn = false;
    bool jinji_mode_daichou = false;
    bool jinji_mode_taisyoku = false;
    bool jinji_mode_fukkatsu = false;
    bool jinji_mode_taisyokusya = false;
    bool jinji_mode_yoteisya = false;
    bool jinji_mode_excel = false;
    bool jinji_mode_kazoku = false;
    bool jinji_mode_kazoku_excel = false;
    bool jinji_mode_shikaku = false;
    bool jinji_mode_shikaku_excel = false;

    // Allocation run
    QString kijunbi;
    QString nenrei_kijunbi;
    QString kinzoku_kijunbi;
    bool haibun_sekkei_mode = false;
    bool haibun_jikkou_mode = false;
    bool jikkou_syuusei_mode = false;
    QString haibun_kubun;
    QString haibun_kubun_mei;
    QString haibun_kijun;
    QString haibun_kijun_mei;
    QString santei_houshiki;
    QString santei_houshiki_mei;
    QString santei_koumoku;
    bool koumoku_kisogaku_a = false;
    bool koumoku_kisogaku_b = false;
    bool koumoku_keisuu = false;
    bool koumoku_shikyuu = false;
    QString settei_meisyou;
    QString settei_meisyou_mei;
    bool hyouka_shikyuu = false;
    bool hyouka_kojinbetsu = false;
    bool hyouka_sougaku = false;

    // The shell's own
    Panels panels;
    /// frmMain redraws its status bar when the panels change.
    std::function<void()> panelsChanged;
    domain::Clock clock = domain::systemClock();
    company::Places places() const { return company::placesOf(app_dir); }
    QString dataDir() const { return places().data; }  ///< where the companies live
    bool companyOpen() const { return panels.company != kNoCompanyPrompt; }

    /// Closes cn_main and lets other processes have the company: its folder is nobody's working directory any
    /// more. The panels are the caller's.
    void closeCompany() {
        cn_main.reset();
        company_lock.reset();
        QDir::setCurrent(dataDir());
    }

    void setCompanyPanel(const QString& text) { setPanel(panels.company, text); }
    void setRunPanel(const QString& text) { setPanel(panels.run, text); }
    void setFolderPanel(const QString& text) { setPanel(panels.folder, text); }

  private:
    void setPanel(QString& panel, const QString& text) {
        panel = text;
        if (panelsChanged) panelsChanged();
    }
};

}  // namespace forms
