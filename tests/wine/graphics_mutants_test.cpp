/*
 * Byte mutants of real metafiles through MF_StreamToMF and MF_Play: none may
 * crash or hang the player.  QV_MUTANTS sets the mutants per file (150 by
 * default, to keep the run short; 1500 for the full run).
 */
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "gfx_pixels.h"
#include "qviso32.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(MetafileMutants, PlayWithoutCrashingOrHanging)
{
    const char *dir = getenv("QV_CORPUS");
    const std::string corpus = std::string("Z:") + (dir ? dir : QV_CORPUS_DIR) + "/wmf/";
    const char *const files[] = {"pillow-drawing.wmf", "wmf2svg-fulltest.wmf", "wmf2svg-symbol-font-tables.wmf"};
    const int perFile = getenv("QV_MUTANTS") ? atoi(getenv("QV_MUTANTS")) : 150;
    std::mt19937 random(20261125);
    gfx::Surface s(16, 12);
    RECT rc{0, 0, 16, 12};
    for (const char *name : files) {
        std::ifstream in(corpus + name, std::ios::binary);
        if (!in)
            GTEST_SKIP() << "no picture corpus at " << corpus;
        Bytes file((std::istreambuf_iterator<char>(in)), {});
        /* The records as a 32-bit stream of an isotropic picture of the
           file's own extent.  A stream carries no length, so the header's
           size fields are kept and the buffer holds what they promise;
           everything after them is fair game. */
        HGLOBAL placeable = MF_OpenMetaFile((corpus + name).c_str());
        METAFILEPICT pict{MM_ISOTROPIC, 2540, 2540, nullptr};
        if (placeable) {
            pict = *static_cast<METAFILEPICT *>(GlobalLock(placeable));
            GlobalUnlock(placeable);
            MF_Destroy(placeable);
        }
        Bytes stream(16, 0);
        memcpy(stream.data(), &pict, 12);
        stream.insert(stream.end(), file.begin() + 22, file.end());
        const size_t promised = 16 + 2 * size_t(stream[22] | stream[23] << 8 | stream[24] << 16 | stream[25] << 24);
        if (stream.size() < promised)
            stream.resize(promised);
        for (int m = 0; m < perFile; m++) {
            Bytes st = stream;
            for (int k = random() % 4; k >= 0; k--) {
                const size_t at = 16 + 18 + random() % (st.size() - 34);
                st[at] = uint8_t(random());
            }
            HGLOBAL mutant = MF_StreamToMF(st.data(), FALSE);
            ASSERT_NE(mutant, nullptr);
            MF_Play(s.dc, &rc, mutant);
            MF_Destroy(mutant);
        }
    }
}

} // namespace
