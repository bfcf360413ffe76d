// What the library remembers of files, as a whole.
#include "filecaches.h"

#include "aster.h"
#include "atmfile.h"
#include "bandfile.h"
#include "bodymodel.h"
#include "brdffile.h"
#include "cls2asterfile.h"
#include "file.h"
#include "shaderfile.h"
#include "tilecontent.h"

namespace sorvane {
void forgetFile(const std::string& path) {
    File::forget(path);
    forgetShader(path);
    AtmFile::forget(path);
    BrdfFile::forget(path);
    Aster::forget(path);
    Cls2AsterFile::forget(path);
    if (BandFile::instance_ != nullptr)
        BandFile::instance_->forget(path);
    BodyModel::cache().forget(path);
    TileContent::cache().forget(path);
}
} // namespace sorvane
