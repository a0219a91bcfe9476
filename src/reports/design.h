#pragma once
#include <QString>
#include <array>
#include <vector>

/// A banded report design as data. All lengths are twips (1/1440 inch), so a design, its pages and its
/// preview are the same on every device.
namespace reports {

enum class Paper { A4Portrait, A4Landscape };

/// The five bands, under the names that the designs give them.
enum class Section {
    Section1,  ///< detail: once for each row
    Section2,  ///< page header, on every page
    Section3,  ///< page footer, on every page
    Section4,  ///< report header, on the first page, above the page header
    Section5,  ///< report footer, behind the last row
};
inline constexpr std::size_t kSections = 5;

enum class ControlKind {
    Label,    ///< fixed text; in the design's own captions "%i" is the report's title, "%p" the page number
    Text,     ///< the bound column's value of the current row
    Line,     ///< a horizontal rule
    Sum,      ///< of the bound column over all rows, Nulls left out
    Average,  ///< likewise; Nulls are left out of the count too
};
enum class Align { Left, Center, Right };
enum class Format {
    Plain,    ///< as a text box shows the value
    Grouped,  ///< "##,##0"
    Date,     ///< yyyy/m/d
};
/// How a control looks: size and weight of a text, weight of a rule.
enum class Style { Title, Subtitle, Notice, Heading, Body, Total, Footer };
enum class Visibility {
    Shown,
    Hidden,
    WhenEmpty,  ///< shown while the report has no row ("該当者はいません。")
};

struct Control {
    ControlKind kind = ControlKind::Label;
    QString name;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    Style style = Style::Body;
    Align align = Align::Left;
    Format format = Format::Plain;
    QString caption;  ///< of a label
    QString column;   ///< bound column of a field or function; empty while unbound (prints nothing)
    Visibility visibility = Visibility::Shown;
    bool captionSetAtRunTime = false;  ///< such a caption is data: it is printed as it is, tokens included
    bool hideRepeated = false;  ///< a field that stays blank while it repeats the row above on the same page
};

struct Band {
    int height = 0;
    std::vector<Control> controls;
    bool canShrink = false;  ///< gives up the room that hidden controls at its lower end would take
};

struct Design {
    QString name;
    Paper paper = Paper::A4Portrait;
    int width = 0;  ///< of all bands, centred on the page; nothing prints beyond it
    std::array<Band, kSections> bands;

    Band& band(Section section) { return bands[static_cast<std::size_t>(section)]; }
    const Band& band(Section section) const { return bands[static_cast<std::size_t>(section)]; }
};

/// The label in each design's Section3 that says whose list it is.
inline const QString kOriginLabel = QStringLiteral("lblOrigin");

/// Lengths of the paper. The vertical margins are the same for all designs.
inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kVerticalMargin = 850;  ///< 15 mm
int paperWidth(Paper paper);
int paperHeight(Paper paper);

}  // namespace reports
