#pragma once

#include <glib-object.h>
#include <memory>

/// GLib's ways of giving back, as smart pointers.
namespace velmo {

struct UnrefObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using OwnedObject = std::unique_ptr<Object, UnrefObject>;

struct UnrefTable {
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
};
using OwnedTable = std::unique_ptr<GHashTable, UnrefTable>;

struct UnrefObjectList {
    void operator()(GList *list) const { g_list_free_full(list, g_object_unref); }
};
using OwnedObjectList = std::unique_ptr<GList, UnrefObjectList>;

} // namespace velmo
