#include "tests/support/Archives.h"

#include <archive.h>
#include <archive_entry.h>

void buildArchive(const QString &path, const Items &items)
{
    archive *writer = archive_write_new();
    path.endsWith(QLatin1String(".7z")) ? archive_write_set_format_7zip(writer)
                                        : archive_write_set_format_zip(writer);
    archive_write_open_filename(writer, qPrintable(path));
    for (const Item &item : items) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, item.name.constData());
        archive_entry_set_mode(entry, item.mode);
        archive_entry_set_symlink(entry, S_ISLNK(item.mode) ? item.bytes.constData() : nullptr);
        archive_entry_set_size(entry, S_ISREG(item.mode) ? qint64(item.bytes.size()) * item.copies : 0);
        if (archive_write_header(writer, entry) < ARCHIVE_WARN) {
            qFatal("can not build an archive: %s", archive_error_string(writer));
        }
        for (int i = 0; i < item.copies && S_ISREG(item.mode); ++i) {
            archive_write_data(writer, item.bytes.constData(), size_t(item.bytes.size()));
        }
        archive_entry_free(entry);
    }
    archive_write_free(writer);
}
