#pragma once

namespace velmo {

class Account;
class Collation;
class ListPushes;
class PreferenceWatch;
class Preferences;
class UndoOffer;

/// What the pages of stored lists work with; all of it outlives them.
struct ListPage {
    Preferences &preferences;
    PreferenceWatch &watch;
    const Collation &collation; ///< Of the person's locale.
    Account &account;
    ListPushes &pushes;
    UndoOffer &undoOffer;
};

} // namespace velmo
