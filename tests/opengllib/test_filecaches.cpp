// Files that have changed are read anew once they are forgotten, and from memory before.
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "asterfiles.h"
#include "atmfile.h"
#include "bandfile.h"
#include "capturedoutput.h"
#include "cls2asterfile.h"
#include "filecaches.h"
#include "filechecks.h"
#include "rows.h"
#include "shaderfile.h"
#include "temporarydirectory.h"

using namespace sorvane;

TEST(FileCaches, ForgetAFileWhateverItHolds) {
    const TemporaryDirectory directory;
    const std::string folder = directory.path().string();
    BandFile::Create();
    directory.write("a.txt", asterText(kRisingPoints));
    using Ask = std::function<float(const std::string& path)>; // one number that the file gives
    const auto atmosphere = [](const std::string& solar) {
        return "1 2 3\n1 2 3 4 5 6 7 8 9 10\n1 2 " + solar + " 4\n";
    };
    const Rows<Ask, std::string, std::string> rows{
        {[](const std::string& path) { return static_cast<float>(ShaderFile().Load(path)); }, "x", ""},
        {[](const std::string& path) { return static_cast<float>(FileExists(path)); }, "x", "removed"},
        {[](const std::string& path) {
             AtmFile file;
             file.Load(path);
             return file.directSolarRadiance();
         },
         atmosphere("4"), atmosphere("5")},
        {[](const std::string& path) { return Aster(path, 8, 9).getReflectance(); }, asterText(kRisingPoints),
         asterText("8 10\n9 10\n")},
        {[](const std::string& path) {
             float lower = 0.0F;
             float upper = 0.0F;
             BandFile::instance_->GetLambda(path, lower, upper);
             return lower;
         },
         "band\n3 5\n", "band\n4 5\n"},
        {[&](const std::string& path) {
             Cls2AsterFile table;
             table.load(path, folder, 8, 9);
             return table.getAsterByClass(1).getReflectance();
         },
         "1 a\n", "2 a\n"},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [ask, before, after] = rows[i];
        const std::string name = "file" + std::to_string(i);
        const std::string path = directory.write(name, before);
        float first = 0.0F;
        float remembered = 0.0F;
        float anew = 0.0F;
        outputOf([&, &ask = ask, &after = after] { // what they say of missing files is their own tests'
            first = ask(path);
            if (after == "removed")
                std::filesystem::remove(path);
            else
                directory.write(name, after);
            remembered = ask(path);
            forgetFile(folder + "//./" + name);
            anew = ask(path);
        });
        EXPECT_EQ(remembered, first) << "row " << i;
        EXPECT_NE(anew, first) << "row " << i;
    }
}
