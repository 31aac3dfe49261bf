#pragma once

class QDialogButtonBox;

/// Gives OK and Cancel the texts of this library's translation, since Qt's own translation may not be loaded.
void TranslateButtons(QDialogButtonBox& box);
