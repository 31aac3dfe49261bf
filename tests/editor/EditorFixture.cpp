#include "EditorFixture.h"

#include <ColorButton.h>

#include <ModalMeeting.h>

#include <kiv/AppearanceSerializer.h>

#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QMimeData>
#include <QTextDocument>
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

void EditorFixture::place(kiv::CAppearanceInstance& texture)
{
    kiv::CMatrix3<float> transform;
    transform(0, 1) = 0.125F;
    texture.SetProperty("rotation", kiv::MakePropertyValue(30.0F));
    texture.SetProperty("scale", kiv::MakePropertyValue(kiv::CVec2<float>(-2, 3)));
    texture.SetProperty("offset", kiv::MakePropertyValue(kiv::CVec2<float>(0.5F, -1)));
    texture.SetProperty("transform", kiv::MakePropertyValue(transform));
    texture.SetProperty("repeat_h", kiv::MakePropertyValue(1));
    texture.SetProperty("repeat_v", kiv::MakePropertyValue(2));
}

void EditorFixture::edit(const kiv::CAppearanceInstancePtr& appearance)
{
    editor->SetAppearance(appearance);
    editor->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.get()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void EditorFixture::stepUp(const kiv::String& key) const
{
    QTest::keyClick(find<QDoubleSpinBox>(key), Qt::Key_Up);
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

QString seenTip(const QWidget& widget)
{
    QTextDocument rich;
    rich.setHtml(widget.toolTip());
    return Qt::mightBeRichText(widget.toolTip()) ? rich.toPlainText() : widget.toolTip();
}

void typeAnew(QWidget& control, const QString& text)
{
    QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&control, text);
}

Qt::DropAction dropUrls(QWidget& target, const QList<QUrl>& urls, Qt::DropActions offered)
{
    QMimeData data;
    data.setUrls(urls);
    const Qt::KeyboardModifiers keys = offered & Qt::MoveAction ? Qt::ShiftModifier : Qt::NoModifier;
    QDragEnterEvent enter({5, 5}, offered, &data, Qt::LeftButton, keys);
    QDropEvent drop(QPointF(5, 5), offered, &data, Qt::LeftButton, keys);
    for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) {
        event->ignore();
        QApplication::sendEvent(&target, event);
    }
    const bool isTaken = enter.isAccepted() && drop.isAccepted() && enter.dropAction() == drop.dropAction();
    return isTaken ? drop.dropAction() : Qt::IgnoreAction;
}

void dropFile(QWidget& target, const QString& file)
{
    dropUrls(target, {QUrl::fromLocalFile(file)}, Qt::CopyAction);
}

QColor chooseColor(QColorButton& button, const QColor& color)
{
    QColor offered;
    ModalMeeting<QColorDialog> meeting([&](QColorDialog& dialog) {
        offered = dialog.currentColor();
        dialog.setCurrentColor(color);
        dialog.accept();
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    return offered;
}
