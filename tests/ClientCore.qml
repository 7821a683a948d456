import QtQml 2.2

QtObject {
    id: root

    property var areas: []
    property var questions: []
    readonly property string lines: areas.map(area => area.qLineArea + ":"
        + area.items.map(line => line.qLineName + "=" + line.qPing)).join(" ")
    readonly property string texts: questions.map(question => question.id + question.questions).join()

    property Connections connections: Connections {
        target: manager
        function onLineInfoStatus() { root.areas = manager.getLineInfoModelList() }
        function onSendLineFeedBackQuestions() { root.questions = settings.getLineFeekbackQuestionByLauguage("_de") }
    }
}
