import QtQml 2.2

QtObject {
    id: root

    property var areas: []
    property var questions: []
    readonly property string names: areas.map(function (area) {
        return area.qLineArea + ":" + area.items.map(function (line) { return line.qLineName; })
    }).join(" ")
    readonly property int ping: areas.length > 0 && areas[0].items.length > 0 ? areas[0].items[0].qPing : -1
    readonly property string questionTexts: questions.map(function (question) {
        return question.id + question.questions
    }).join()

    property Connections connections: Connections {
        target: manager
        function onLineInfoStatus(status) { root.areas = manager.getLineInfoModelList() }
        function onSendLineFeedBackQuestions(ok) {
            root.questions = settings.getLineFeekbackQuestionByLauguage("_de")
        }
    }
}
