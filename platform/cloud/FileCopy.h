#pragma once

#include "Answer.h"

#include <QFile>
#include <QObject>
#include <QTimer>

namespace nuvs {

/// Copies a regular file into an open one, a block a pass of the event loop, so that others' requests go on meanwhile.
/// Deletes itself after `done`; whoever deletes it before hears nothing more.
class CFileCopy : public QObject {
public:
    enum class EDirection { Up, Down };
    /// True when the whole file was copied; else the error.
    using Done = std::function<void(bool isWhole, QNetworkReply::NetworkError error)>;

    CFileCopy(const QString& from, std::unique_ptr<QFileDevice> to, EDirection direction, AnswerBasePtr answer);
    ~CFileCopy() override;

    void Start(const Done& done);
    /// Of the file copied into: to be committed, or simply closed.
    QFileDevice& Target() { return *m_to; }
    qint64 Size() const { return m_size; }

private:
    void CopyBlock();
    void Tell();
    bool IsWhole() const;
    void End(bool isWhole, QNetworkReply::NetworkError error);

    QFile m_from;
    std::unique_ptr<QFileDevice> m_to;
    const EDirection m_direction;
    AnswerBasePtr m_answer;
    Done m_done;
    QTimer m_next;
    qint64 m_size = 0;
    qint64 m_copied = 0;
};

}  // namespace nuvs
