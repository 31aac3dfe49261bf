#pragma once

#include <QFile>

namespace nuvs {

/// The first bytes of a file as a body that is sent: neither what is appended meanwhile, nor less.
class CUploadFile : public QIODevice {
public:
    CUploadFile(const QString& path, qint64 size);

    qint64 size() const override { return m_size; }
    bool atEnd() const override { return pos() >= m_size; }
    bool seek(qint64 pos) override;

protected:
    /// -1 when the file has become shorter: the request is then given up.
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

private:
    QFile m_file;
    const qint64 m_size;
};

}  // namespace nuvs
