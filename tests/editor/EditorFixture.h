#pragma once

#include <AppearanceDynamicEditor.h>

#include <LibraryFixture.h>

#include <QList>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>

class QColorButton;

/// A material library with an editor over it, and what the editor announced.
class EditorFixture : public LibraryFixture {
public:
    EditorFixture();

    /// An appearance of the type, its id as name, in the project's library.
    kiv::CAppearanceInstancePtr add(const kiv::String& type, const kiv::String& id);
    /// Turns the texture by 30 degrees, makes it 2 wide, mirrored, and 3 high, with an offset of 0.5 and -1, and lets
    /// it be repeated mirrored in width and clamped in height. Its transform is another one, as if made elsewhere.
    static void place(kiv::CAppearanceInstance& texture);
    /// Shows the appearance in a shown editor.
    void edit(const kiv::CAppearanceInstancePtr& appearance);
    /// Steps the number up by its key.
    void stepUp(const kiv::String& key) const;
    /// "record" or the key, in the order of announcements since the last call, with blanks between.
    QString takeEvents() { return std::exchange(m_events, {}).join(' '); }
    /// Takes all edits back by their records, the last one first, and answers the document after each.
    QList<QByteArray> takeBackAll();

    template <typename Control>
    Control* find(const kiv::String& key) const
    {
        return editor->findChild<Control*>(QString::fromStdString(key));
    }

    std::unique_ptr<CAppearanceDynamicEditor> editor;
    std::vector<kiv::String> records;
    /// Called with "record" or the key as it is announced.
    std::function<void(const QString&)> onEvent = [](const QString&) {};

private:
    void announce(const QString& event);

    QStringList m_events;
};

/// The tool tip as it is read, whatever it is made of.
QString seenTip(const QWidget& widget);

// What a person does.

void typeAnew(QWidget& control, const QString& text);
void dropFile(QWidget& target, const QString& file);
/// What the program that the files come from is answered.
Qt::DropAction dropUrls(QWidget& target, const QList<QUrl>& urls, Qt::DropActions offered);
/// Presses the button and chooses in the dialog that opens. The colour that it began with; invalid when none opened.
QColor chooseColor(QColorButton& button, const QColor& color);
