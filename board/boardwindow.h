// The board editor.
#pragma once

#include "board/everymove.h"
#include "board/pointerwatch.h"
#include "history/boardrecorder.h"
#include "history/boardsnapshot.h"

#include <QGraphicsScene>
#include <QLocale>
#include <QMainWindow>
#include <QPainterPath>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class ArrowLineItem;
class FreeDrawItem;
class QPropertyAnimation;

namespace Ui {
class BoardWindow;
}

/// The tool that the pointer works with on the board.
enum class ToolMode : int { Cursor = 0, Note = 1, Pen = 2, Line = 3, Image = 4, Eraser = 5 };

/// The board editor: a window of fixed size (1200 × 700 pixels) that shows one board, a scene of
/// 1920 × 1080 units, with floating panels around it.
///
/// One object serves every board in turn; closing a board hides the window and takes all items off
/// the scene. The window owns its scene and the scene owns the items on it.
///
/// boardwindow.cpp builds and wires the window; each other concern has a file of its own:
/// canvasinput.cpp, boardfiles.cpp, boardname.cpp, undoredo.cpp,
/// presentation.cpp, closing.cpp.
class BoardWindow : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BoardWindow)

public:
    /// \a home is shown again when the board is closed; it is not owned and must outlive the board
    /// window. May be null: then nothing is shown.
    explicit BoardWindow(QWidget *home, QWidget *parent = nullptr);
    ~BoardWindow() override;

    /// Replaces the board by the one in the file \a path. A file that cannot be read or is no
    /// board is answered with a warning and leaves the board as it was.
    void loadBoard(const QString &path);

    /// Has the board in the file \a path take the place of the present one, after the question with which
    /// a board is closed. "Cancelar", a file that is no board and a present board that could not be saved
    /// leave all as it is.
    void openInstead(const QString &path);

    /// Whether \a path is the file of the board.
    bool shows(const QString &path) const;

    /// Stores whether the board has changes that are not in its file, and shows it.
    void setUnsaved(bool value);

    /// Shows the file name of the board and, after it, the marker of unsaved changes. A board
    /// without a file keeps the label that it has.
    void updateTitleLabel();

    /// Has the label read \a name, until the next change of the file or of the marker.
    void showBoardName(const QString &name);

    /// Records the state of the scene in the undo history, unless it equals the last one kept.
    void captureSnapshot();

    /// Sees the mouse events of the canvas that no item took.
    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    // In the order of their meta-object indices, which callers by index rely on.

    /// Ends the work on the board: asks whether to save it, unless it is empty and unchanged, then
    /// clears the scene, shows the home window and hides this one. "Cancelar" leaves all as it is.
    void closeBoard();

    /// Takes up the cursor, which moves, edits and selects items.
    void setCursorMode();
    /// Takes up the notes; every click on the canvas adds one until another tool is taken up.
    void setPostItMode();
    /// Takes up the pen for one stroke.
    void setPenMode();
    /// Takes up the line for one arrow.
    void setLineMode();
    /// Asks for a picture and puts it in the middle of the board. A file that is no picture is
    /// answered with a warning. Returns with the cursor taken up.
    void setImageMode();
    /// Takes up the eraser for one click or drag.
    void setEraseMode();

    /// Goes back to the state of the board before the last recorded one, if there is one.
    void undoMode();
    /// Goes forth to the state of the board that was undone last, if there is one.
    void redoMode();

    /// Asks for a file name, saves the board there and takes the file for the board's own. When it
    /// cannot be written, a warning says so and the board keeps the file that it had, if any.
    void saveBoardAs();
    /// Saves the board to its file, without a question; a board that has none as saveBoardAs().
    void saveBoard();

    /// Esc ends a presentation.
    void keyPressEvent(QKeyEvent *event) override;
    /// Begins a presentation when \a index is 0, the only choice of the box, unless one is on.
    void manejarPresentacion(int index);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    using Items = std::vector<std::unique_ptr<QGraphicsItem>>;
    /// What becomes of the board of which somebody takes leave.
    enum class Leaving { Stay, Save, Discard };

    // boardwindow.cpp
    void buildScene();
    void buildWindow();
    void widenGrips();
    void scrollToCorner();
    void startClock();
    void showTime();
    void connectSignals();
    void warn(const QString &text);

    // boardname.cpp
    void keepMarkerInSight();

    // canvasinput.cpp
    void enterMode(ToolMode mode);
    bool canvasPressed(const QPointF &scenePoint);
    bool canvasMoved(const QPointF &scenePoint, Qt::MouseButtons buttons);
    bool canvasReleased(const QPointF &scenePoint);
    bool endGesture();
    void breakOffGesture();
    void letGoOfItem();
    void grabCanvas();
    void releaseCanvas();
    void erase(const QList<QGraphicsItem *> &items);
    void insertImage(const QPixmap &pixmap);

    // undoredo.cpp
    void captureChanges(const QList<QRectF> &changed);
    void keepSnapshot(const BoardSnapshot &snapshot);
    void showSnapshot(const BoardSnapshot &snapshot);

    // boardfiles.cpp
    std::optional<Items> readBoard(const QString &path);
    bool save();
    bool saveElsewhere();
    bool writeBoardFile(const QString &path, bool adoptPath);

    // presentation.cpp
    void startPresentation();
    void stopPresentation();
    void layOutPresentation();
    void showReminder();
    void fadeReminder(int duration, qreal from, qreal to);
    void setFrameless(bool frameless);
    void setSizeHints(const QSize &smallest, const QSize &largest);

    // closing.cpp
    Leaving askHowToLeave();
    void resetBoard();

    bool unsaved = false;
    std::unique_ptr<Ui::BoardWindow> ui;
    QLocale locale{QLocale::Spanish, QLocale::Mexico};
    QWidget *homeWindow;
    ToolMode toolMode = ToolMode::Cursor;
    QGraphicsScene *scene = nullptr;
    QString currentFilePath;
    // Guarded: undo may delete the item of a gesture that was broken off.
    QPointer<FreeDrawItem> currentStroke;
    QPainterPath strokePath;
    std::optional<EveryMove> everyMove; // for the first points of a stroke
    QPointer<ArrowLineItem> currentLine;
    QPointF lineStart;
    bool presenting = false;
    QPointF eraseStart;
    PointerWatch pointerWatch{*this, [this] { breakOffGesture(); }};
    std::unique_ptr<BoardRecorder> recorder;
    QList<BoardSnapshot> undoStack;
    QList<BoardSnapshot> redoStack;
    // Quirk: nine steps can be undone where the help page speaks of ten, because the oldest of the
    // ten snapshots is the baseline.
    int historyLimit = 10;
    // Each presentation leaves its two here; a fade-out outlives the presentation it belongs to.
    std::vector<std::unique_ptr<QPropertyAnimation>> reminderFades;
};
