#pragma once
#include <QFrame>
#include <QString>
#include <initializer_list>

class QAbstractItemView;
class QGridLayout;
class QHBoxLayout;
class QHelpEvent;
class QKeyEvent;
class QLabel;
class QVBoxLayout;

/// How screens are laid out, so that all look alike: one column with margins of two grid units, a header
/// block on top, cards with what belongs together, a row of buttons at the bottom.
namespace widgets {

/// The column of a screen (or of a panel): installed on `screen`, margins 2 * kGrid, spacing 1.5 * kGrid.
QVBoxLayout* columnOf(QWidget* screen);

/// The header block: a title (Tone::Title) above a guidance line (Tone::Muted, wraps). Either may be null.
/// Sets no text, so a Warning tone set later stays what the screen makes of it.
QVBoxLayout* headerBlock(QLabel* title, QLabel* guidance);

/// The bottom row: `apart` at the left (help, danger), `actions` at the right with the main action last. Null
/// is skipped. Tab order stays the order in which the screen made its controls: see tabOrder().
QHBoxLayout* buttonRow(std::initializer_list<QWidget*> apart, std::initializer_list<QWidget*> actions);

/// Label and field pairs under one another, labels in one column; a grid with the house's spacing and a
/// stretching field column.
QGridLayout* fieldGrid();
/// Appends a pair at the grid's next row; `label` may be null.
void addField(QGridLayout* grid, QWidget* label, QWidget* field);

/// Reading order where it differs from the order of making.
void tabOrder(std::initializer_list<QWidget*> controls);

/// A framed surface for what belongs together. Children are put into body() (or into a layout of its own).
class Card : public QFrame {
    Q_OBJECT
  public:
    explicit Card(QWidget* parent = nullptr);
    QVBoxLayout* body();  ///< made at the first call
};

/// What an empty list or table says in its middle: what to do next. Called after the view has painted itself.
void paintEmptyState(QAbstractItemView* view, const QString& text);
/// Enter as the key that opens a row; held down it opens nothing.
bool isEnter(const QKeyEvent* event);
/// Shows a cell's whole text as tool tip when the cell cuts it. True when the event is dealt with.
bool showCutText(QAbstractItemView* view, QHelpEvent* event);

}  // namespace widgets
