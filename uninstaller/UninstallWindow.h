#pragma once

#include <QQuickView>

class DataManager;
class Uninstaller;

// The language of the installation in this directory, or that of the locale where its settings
// cannot be read: they belong to root alone.
void speakLanguageOf(const QString &directory, DataManager &settings);

// The uninstaller's frameless window. It needs the QML types, and what it shows has to outlive it.
class UninstallWindow : public QQuickView {
    Q_OBJECT

public:
    explicit UninstallWindow(Uninstaller &uninstaller);

    // False when the scene does not load: then the user has been told why.
    bool open(const QUrl &scene = QUrl(QStringLiteral("qrc:/uninstall/Uninstall.qml")));
};
