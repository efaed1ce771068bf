import QtQuick

PushButton {}
