#include "MessageBoxes.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

struct ButtonText {
    QMessageBox::StandardButton button;
    const char* text;
};

// Qt has its own in another translation, which a host may not load.
const ButtonText buttonTexts[] = {
    {QMessageBox::Yes, QT_TRANSLATE_NOOP("MessageBoxes", "&Yes")},
    {QMessageBox::No, QT_TRANSLATE_NOOP("MessageBoxes", "&No")},
    {QMessageBox::Ok, QT_TRANSLATE_NOOP("MessageBoxes", "OK")},
};

// Those that the box does not have are left out.
void translateButtons(QMessageBox& box)
{
    for (const ButtonText& known : buttonTexts)
        box.setButtonText(known.button, QCoreApplication::translate("MessageBoxes", known.text));
}

}  // namespace

QMessageBox::StandardButton MessageBoxes::Ask(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                              const QString& text, QMessageBox::StandardButtons buttons,
                                              QMessageBox::StandardButton defaultButton)
{
    const QPointer<QMessageBox> box(new QMessageBox(icon, title, text, buttons, parent));
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(defaultButton);
    translateButtons(*box);
    const int answer = box->exec();
    if (!box)
        return QMessageBox::NoButton;
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}

void MessageBoxes::Warn(QWidget* parent, const QString& title, const QString& text)
{
    Ask(parent, QMessageBox::Warning, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

QString MessageBoxes::Lines(const QStringList& complaints)
{
    constexpr int most = 10;
    QStringList shown = complaints.mid(0, most);
    if (complaints.size() > most)
        shown.append(QStringLiteral("……"));
    return shown.join(QLatin1Char('\n'));
}
