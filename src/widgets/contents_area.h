#pragma once
#include <QScrollArea>

class QBoxLayout;

namespace widgets {

/// The contents of a screen above its command bar. As large as they want to be where the screen has room for
/// them, and then without scroll bars; where it has not, they scroll and the command bar stays in sight.
/// Never takes the focus; what gets it inside is scrolled into sight by the form.
class ContentsArea : public QScrollArea {
    Q_OBJECT
  public:
    /// Takes all items of the column but the last one, the command bar, and stands in their place. Null where
    /// the column does not end in a row with buttons.
    static ContentsArea* above(QBoxLayout* column);

    /// What the available screen leaves for the contents: the least size asks for no more.
    void setRoom(QSize room);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    explicit ContentsArea(QWidget* screen);
    QSize leastSize(int width) const;
    void fit();

    QSize room_{QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
};

}  // namespace widgets
