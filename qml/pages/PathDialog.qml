import QtQuick 2.9
import QtQuick.Dialogs 1.0
import VORN.DataManager 1.0

FileDialog {
    signal pathChosen(string path)

    // Opening brings a dialog into the working directory, so the folder is set afterwards.
    function openAt(place) {
        open();
        folder = String(place) === "" ? shortcuts.home : place;
    }

    selectFolder: true
    title: qsTranslate("main", "Select Directory") + DataManager.emptyString

    // Where a path begins with "/" the slash goes too, and the path becomes relative to the
    // directory that the installer was started from.
    onAccepted: pathChosen(fileUrl.toString().replace("file:///", "") + "/VornVPN")
}
