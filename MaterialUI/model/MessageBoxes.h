#pragma once

#include "MaterialUIExport.h"

#include <QMessageBox>

/// Message boxes that may go away with their parent while they are open: a host may close and delete a dialog at any
/// time, and Qt's static functions would then delete a box on the stack. Texts are shown as plain text. Whoever calls
/// looks afterwards whether it is still there itself.
namespace MessageBoxes {

/// The button that was pressed; NoButton when the box went with its parent.
MATERIALUI_EXPORT QMessageBox::StandardButton Ask(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                                  const QString& text, QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton defaultButton);
/// One button to acknowledge.
MATERIALUI_EXPORT void Warn(QWidget* parent, const QString& title, const QString& text);

/// As many complaints as a box or a tool tip has room for, a line each.
MATERIALUI_EXPORT QString Lines(const QStringList& complaints);

}  // namespace MessageBoxes
