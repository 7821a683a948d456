#include "app/LogHandlers.h"
#include "app/PXMainWindows.h"
#include "app/QtTexts.h"
#include "app/StartUp.h"
#include "base/FirstFrame.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char *argv[])
{
    preferX11();
    scaleOnDenseScreens();
    useSoftwareSceneGraph();
    QApplication application(argc, argv);
    loadFontsAhead();
    if (isDebug) {
        qInstallMessageHandler(kqMessageOutput);
    }
    DataManager *settings = DataManager::getInstance();
    registerQmlTypes();
    settings->changeLanguage(settings->languageTypeTransToInt(settings->getSoftUseLanguage()));

    PXMainWindows window;
    centreOnPrimaryScreen(window);
    FirstFrame::then(&application, [&application] {
        QApplication::setWindowIcon(windowIcon());
        translateQtTexts(&application);
    });
    const int exitCode = QApplication::exec();

    // A copy that is still running would put the bundle's own settings over those written here.
    window.hide();
    Operating::waitForCopies();
    settings->writeDataToFile(settings->getInstallPath() + "/");
    settings->writeDataToFile(QString());
    return exitCode;
}
