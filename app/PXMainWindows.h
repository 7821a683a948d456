#pragma once

#include <QQuickView>

class WindowShape;

// The installer's only window: frameless and transparent, it loads the scene, shows itself and
// carries out what the scene asks of a window. A scene that does not load leaves it empty.
class PXMainWindows : public QQuickView {
    Q_OBJECT

public:
    explicit PXMainWindows(QWindow *parent = nullptr);
    ~PXMainWindows() override;

public slots:
    void slot_drag(int x, int y); // an offset, in pixels
    void onCloseWindows(); // also ends the event loop
    void onMiniWindows();
    void onHideWindows();
    void onShowWindows();
    void onWidthChanged(int w); // calls onPXWidthChanged(w) of a scene that has it

private slots:
    void showDrawnPart(); // follows the scene's panel
    void dragByCompositor();

private:
    void loadScene(const QUrl &scene);
    void tellFirstFrame();

    QObject *m_root = nullptr; // the scene; null when it did not load
    WindowShape *m_shape = nullptr; // the window's child
};
