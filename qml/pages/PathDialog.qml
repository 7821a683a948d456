import QtQuick 2.9
import QtQuick.Dialogs 1.0
import VORN.DataManager 1.0

FileDialog {
    signal pathChosen(string path)

    selectFolder: true
    // Until a better one is known; without it the dialog opens where the installer was started.
    folder: shortcuts.home
    title: qsTranslate("main", "Select Directory") + DataManager.emptyString

    // Where a path begins with "/" the slash goes too, and the path becomes relative to the
    // directory that the installer was started from.
    onAccepted: pathChosen(fileUrl.toString().replace("file:///", "") + "/VornVPN")
}
