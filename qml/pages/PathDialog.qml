import QtQuick 2.9
import QtQuick.Dialogs 1.0
import VORN.DataManager 1.0

FileDialog {
    signal pathChosen(string path)

    property url proposed

    // Opening brings a dialog into the working directory, so the folder is set afterwards.
    function openAt(place) {
        open();
        propose(place);
    }

    // For what becomes known late: nobody who has already gone elsewhere is brought back.
    function proposeLate(place) {
        if (visible && String(folder) === String(proposed))
            propose(place);
    }

    function propose(place) {
        proposed = String(place) === "" ? shortcuts.home : place;
        folder = proposed;
    }

    selectFolder: true
    title: qsTranslate("main", "Select Directory") + DataManager.emptyString

    // Where a path begins with "/" the slash goes too, and the path becomes relative to the
    // directory that the installer was started from.
    onAccepted: pathChosen(fileUrl.toString().replace("file:///", "") + "/VornVPN")
}
