#include "uninstaller/UninstallWindow.h"

#include "app/StartUp.h"
#include "settings/DataManager.h"
#include "uninstaller/Uninstaller.h"

#include <QCoreApplication>
#include <QLocale>
#include <QMessageBox>
#include <QQmlContext>
#include <QQmlError>

#include <cstdio>

namespace {

constexpr char notLoaded[] =
    QT_TRANSLATE_NOOP("uninstall", "The window of the uninstaller could not be loaded.");

// The first language of the user that the programs speak; otherwise English, their first.
int languageOfLocale(const DataManager &settings)
{
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString &name : wanted) {
        const QString language = name.section(QLatin1Char('-'), 0, 0);
        const QString code = language == QLatin1String("zh") ? QStringLiteral("_zh_hk")
                                                             : QLatin1Char('_') + language;
        const int index = settings.languageTypeTransToInt(code);
        if (index != 0 || language == QLatin1String("en")) {
            return index;
        }
    }
    return 0;
}

} // namespace

void speakLanguageOf(const QString &directory, DataManager &settings)
{
    const bool isRead = settings.readDataFromFile(directory + QLatin1Char('/'));
    const QString code = isRead ? settings.getSoftUseLanguage() : QString();
    settings.changeLanguage(
        code.isEmpty() ? languageOfLocale(settings) : settings.languageTypeTransToInt(code));
}

UninstallWindow::UninstallWindow(Uninstaller &uninstaller)
{
    setFlags(Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    setTitle(QStringLiteral("VornVPN"));
    rootContext()->setContextProperty(QStringLiteral("uninstaller"), &uninstaller);
}

bool UninstallWindow::open(const QUrl &scene)
{
    setSource(scene);
    if (status() != QQuickView::Ready) {
        QString text = QCoreApplication::translate("uninstall", notLoaded);
        const QList<QQmlError> faults = errors();
        for (const QQmlError &fault : faults) {
            text += QLatin1Char('\n') + fault.toString();
        }
        std::fprintf(stderr, "%s\n", qPrintable(text));
        QMessageBox::critical(nullptr, QStringLiteral("VornVPN"), text);
        return false;
    }
    equipFramelessWindow(*this);
    centreOnPrimaryScreen(*this);
    show();
    return true;
}
