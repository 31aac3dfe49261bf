#include "EditorFixture.h"

#include <ColorButton.h>

#include <ModalMeeting.h>

#include <kiv/AppearanceSerializer.h>

#include <QColorDialog>
#include <QDropEvent>
#include <QMimeData>
#include <QtTest>

EditorFixture::EditorFixture() : editor(std::make_unique<CAppearanceDynamicEditor>(manager(), library(), nullptr))
{
    QObject::connect(editor.get(), &CAppearanceEditorWidget::OnTransformEditedData, [this](const kiv::String& data) {
        records.push_back(data);
        announce("record");
    });
    QObject::connect(editor.get(), &CAppearanceEditorWidget::OnAppearancePropertyChanged,
                     [this](const kiv::CAppearanceInstancePtr& appearance, const kiv::String& key) {
                         QVERIFY(appearance && appearance == editor->GetAppearance());
                         announce(QString::fromStdString(key));
                     });
}

void EditorFixture::announce(const QString& event)
{
    m_events += event;
    onEvent(event);
}

kiv::CAppearanceInstancePtr EditorFixture::add(const kiv::String& type, const kiv::String& id)
{
    const auto appearance = library().CreateMaterial(type, QString::fromStdString(id).toStdWString());
    appearance->SetId(id);
    manager().FindUserAppearanceLibrary("Customer Library")->AddInstance(appearance);
    return appearance;
}

void EditorFixture::edit(const kiv::CAppearanceInstancePtr& appearance)
{
    editor->SetAppearance(appearance);
    editor->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.get()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

QList<QByteArray> EditorFixture::takeBackAll()
{
    kiv::CAppearanceSerializer serializer(manager());
    serializer.SetAppearanceLibrary(manager().FindUserAppearanceLibrary("Customer Library"));
    QList<QByteArray> documents;
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        const auto appearance = serializer.DeserializeEditedMaterialData(*record);
        documents += appearance ? document(appearance) : QByteArray();
    }
    records.clear();
    return documents;
}

void typeAnew(QWidget& control, const QString& text)
{
    QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&control, text);
}

void dropFile(QWidget& target, const QString& file)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &drop);
}

void chooseColor(QColorButton& button, const QColor& color)
{
    ModalMeeting<QColorDialog> meeting([&](QColorDialog& dialog) {
        dialog.setCurrentColor(color);
        dialog.accept();
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(meeting.met);
}
