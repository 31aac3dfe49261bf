#include "ZipBuilder.h"

#include <QtGlobal>

#include <zip.h>

QByteArray makeZip(const QVector<ZipMember>& members)
{
    zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_t* archive = zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    Q_ASSERT(archive);
    zip_source_keep(source);
    for (const ZipMember& member : members) {
        zip_source_t* bytes =
            zip_source_buffer(archive, member.bytes.constData(), zip_uint64_t(member.bytes.size()), 0);
        const auto index = zip_uint64_t(zip_file_add(archive, member.name.constData(), bytes, ZIP_FL_ENC_UTF_8));
        zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, 1);
        if (member.encrypted)
            zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "secret");
    }
    if (zip_close(archive) != 0)
        qFatal("cannot build an archive: %s", zip_strerror(archive));
    zip_stat_t status;
    zip_source_stat(source, &status);
    QByteArray result(int(status.size), '\0');
    zip_source_open(source);
    zip_source_read(source, result.data(), status.size);
    zip_source_close(source);
    zip_source_free(source);
    return result;
}
