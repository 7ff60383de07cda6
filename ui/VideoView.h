// The right pane while a picture plays. The engine draws the picture into a
// native window of its own inside the view, which the view places where the
// engine asks; mouse and keys over the picture reach the view, which turns
// them into volume steps, pause and mute (and, on a disc, menu actions).
#pragma once
#include <QWidget>

#include "ui/WindowHandles.h"

class COrvexDoc;
class CMediaPlayer;

class COrvexVideoView : public QWidget, public CWndTarget {
    Q_OBJECT
public:
    explicit COrvexVideoView(COrvexDoc* document, QWidget* parent = nullptr);

    COrvexDoc* GetDocument() const { return m_pDoc; }
    // Once the view stands in its pane: the picture's window is made known
    // to the pipeline.
    void OnInitialUpdate();
    // Where the engine wants the picture, in the view's client coordinates.
    void PlacePicture(int left, int top, int width, int height, bool visible);
    // The window the picture is drawn into, or null where the display has
    // no such windows (no X11).
    QWidget* PictureWindow() const { return m_picture; }
    // Puts the picture back after the window was exposed.
    void OnDraw();

    BOOL m_bRepaintVideo = FALSE;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    CMediaPlayer* Engine() const;
    // A DVD menu's buttons under the mouse: selected as it moves, activated
    // when the left button is let go.
    void OnDvdMenuMouse(const QPoint& point, BOOL activate);

    COrvexDoc* m_pDoc;
    QWidget* m_picture = nullptr;
};
