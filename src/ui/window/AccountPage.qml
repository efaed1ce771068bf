import QtQuick
import QtQuick.Window
import Velmo.Models

/// Who is signed in and when their data was last brought in step, or the way to sign in.
Page {
    id: page

    required property AccountView view

    title: qsTr("Account")

    Binding {
        target: page.view
        property: "isShown"
        value: page.visible && page.Window.visibility !== Window.Hidden
    }

    SignedInAccount {
        width: parent.width
        visible: page.view.isSignedIn
        account: page.view
    }

    SignInCard {
        width: parent.width
        visible: !page.view.isSignedIn
        account: page.view
    }
}
