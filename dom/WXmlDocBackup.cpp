#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>

#include <memory>

namespace File = TibUtils::SystemIO::File;

namespace {

/// A backup in a temporary file, which goes with it.
class WTempFileImpl : public WDataBackup {
public:
    ~WTempFileImpl() override {
        tibxml::engine::quietly(false, [this] { return File::Delete(path); });
    }

    CString path;
};

} // namespace

WDataBackup::~WDataBackup() = default;

WDataBackup* WXmlDoc::Backup() {
    try {
        auto record = std::make_unique<WTempFileImpl>();
        record->path = TibUtils::SystemIO::Path::GetTempFileNameW(nullptr, nullptr, nullptr);
        // Whatever cannot be written shows when the record is restored.
        File::ProbeCreateFile(record->path);
        Save(record->path);
        return record.release();
    } catch (...) {
        return nullptr;
    }
}

void WXmlDoc::Restore(WDataBackup const* backup) {
    Load(static_cast<WTempFileImpl const*>(backup)->path);
}
