pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Models

/// How to dictate, figures about the use, and the history.
Page {
    id: page

    required property HomeView view

    title: qsTr("Welcome back")

    HeroCard {
        view: page.view
        width: parent.width
    }

    Row {
        id: statistics
        width: parent.width
        spacing: 12

        Repeater {
            model: page.view.statistics

            StatisticCard {
                width: (statistics.width - 3 * statistics.spacing) / 4
            }
        }
    }

    Column {
        visible: page.view.isHistoryEmpty
        width: parent.width
        topPadding: 8

        EmptyState {
            width: parent.width
            height: 220
            symbolName: "waveform"
            title: qsTr("No transcriptions yet")
            description: page.view.emptyText
        }
    }

    HistoryList {
        visible: !page.view.isHistoryEmpty
        width: parent.width
        view: page.view
        scrolling: page.scrolling
    }
}
