#pragma once

#include <QDialog>
#include <QFont>
#include <QPen>
#include <array>

class QLineEdit;

// The colour legend over the view: a vertical ramp of the current colour
// table with four editable values (maximum at the top, two thirds, one
// third, minimum at the bottom). Editing a value changes the height range
// and emits sig_MinMax. Frameless and translucent; it can be dragged inside
// its parent, and Escape never closes it.
class QelColorBarDialog : public QDialog {
    Q_OBJECT
public:
    explicit QelColorBarDialog(QWidget* parent = nullptr);

    double minimumValue() const { return minimum; }
    double maximumValue() const { return maximum; }
    int colourScheme() const { return scheme; }
    // Colour tables 0..6: 0 grey, 1 the five-piece map, 2 rainbow, 3 hot
    // are drawn by their formulas; the others sample the table itself.
    void setScheme(int table);
    // The range of the data shown, without emitting sig_MinMax.
    void setRange(double min, double max);
    void setTextColour(const QColor& colour);
    QLineEdit* edit(int index) const { return edits.at(static_cast<size_t>(index)); }
    // The ramp's colour y pixels from its bottom, for a ramp 'height' high.
    static QColor rampColour(int scheme, int y, int height);

signals:
    void sig_MinMax(double min, double max);

public slots:
    // Writes the four tick values into the edits, 5 significant digits.
    void updateLineEdit();
    // Brings the dialog back inside its parent (after the parent shrank).
    void moveMessage();
    void ValueChange1();
    void ValueChange2();
    void ValueChange3();
    void ValueChange4();
    void UpdateValue();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void recomputeTicks();
    // After an edit: ticks, edits, repaint, then the signal.
    void rangeEdited();
    double entered(int index) const;
    bool fitsParent(const QPoint& position) const;

    QRect dragArea;
    bool dragging = false;
    QPoint pressPosition;
    int scheme = 1;
    double minimum = 0.0;
    double tick1 = 0.0, tick2 = 0.0, tick3 = 0.0, tick4 = 0.0;
    double maximum = 255.0;
    int barWidth = 10;
    QPen pen{Qt::black};
    QFont font;
    QColor textColour{Qt::black};
    std::array<QLineEdit*, 4> edits{};
};
