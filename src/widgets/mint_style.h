#pragma once
#include <QProxyStyle>

namespace widgets {

/// The names of the roles that a control can bear (dynamic properties).
inline constexpr char kRoleProperty[] = "mintRole";  ///< of a button: "primary" or "danger"
inline constexpr char kToneProperty[] = "mintTone";  ///< of a label
/// States of a field, true or false: a combo that only shows, and a field that the company does not enter.
inline constexpr char kLockedProperty[] = "mintLocked";
inline constexpr char kNotEnteredProperty[] = "mintNotEntered";
inline constexpr char kFaultyProperty[] = "mintFaulty";  ///< its content was refused
inline constexpr unsigned kNotEnteredFill = 0xffc0c0c0;
inline constexpr unsigned kNotEnteredText = 0xff26241f;

/// Fusion with flat surfaces, rounded fields and the accent as focus ring. Colours come from the palette,
/// sizes from the font, so a larger font enlarges everything.
class MintStyle : public QProxyStyle {
  public:
    MintStyle();
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
};

}  // namespace widgets
