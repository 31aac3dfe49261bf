#include "DialogButtons.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QPushButton>

void TranslateButtons(QDialogButtonBox& box)
{
    box.button(QDialogButtonBox::Ok)->setText(QCoreApplication::translate("DialogButtons", "OK"));
    box.button(QDialogButtonBox::Cancel)->setText(QCoreApplication::translate("DialogButtons", "Cancel"));
}
