#pragma once

#include <QImage>
#include <QObject>
#include <QThreadPool>

/// Decodes one picture at a time off the user-interface thread, for a place that shows one picture: what is asked for
/// last counts.
class CPictureLoader : public QObject {
    Q_OBJECT

public:
    explicit CPictureLoader(QObject* parent);
    /// Waits for a picture that is being decoded.
    ~CPictureLoader() override;

    /// Asks for the picture (a path of this machine), as small as covers the size in pixels. Loaded() follows unless
    /// another one is asked for first.
    void Load(const QString& file, const QSize& size);

signals:
    /// Null for what is no picture.
    void Loaded(const QString& file, const QImage& picture);

private:
    QThreadPool m_pool;
};
