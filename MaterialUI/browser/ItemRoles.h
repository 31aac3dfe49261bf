#pragma once

#include <Qt>

/// What the items of tree, table and combo box hold. The numbers are an interface to hosts.
enum EnItemRole {
    CloudRole = 254,                    ///< table column 0: known to the cloud
    TextureRole = 255,                  ///< table column 0: file of the texture, of which the middle is shown
    IdRole = Qt::UserRole,              ///< appearance id, library name, category path or tree index
    AppearanceRole = Qt::UserRole + 1,  ///< tree: true on the item of an appearance
    PictureRole = 511,                  ///< table column 0: file of a picture drawn as it is
};

enum EnTableColumn { PictureColumn = 0, NameColumn = 1 };
