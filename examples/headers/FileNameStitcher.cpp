// Names of frame files, built and parsed.
#include <MRCommon/frames/FileNameStitcher.h>

#include "claim.h"

int main() {
    FileNameStitcher& names = FileNameStitcher::instance();
    names.prefix = "cache/$(SCENENAME)/";
    names.setSceneName("shot.scn");
    claim(names.doIt("fluid", 12, "bin") == "cache/shot/fluid00012.bin", "the file of frame 12");
    names.order = FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT;
    claim(names.doIt("fluid", 12, "bin") == "cache/shot/fluid.00012.bin", "in another layout");

    quarn::QN_String name, extension;
    unsigned int first = 0, last = 0, padding = 0;
    FrameExtensionOrder order{};
    claim(FileNameStitcher::frameExtensionFromPath("none/fluid_0007.bin", name, extension, first, last,
                                                   padding, order),
          "a path is parsed");
    claim(name == "none/fluid" && extension == "bin" && padding == 4, "into name, extension and padding");
    claim(order == FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT, "and the layout");
    claim(last == 6, "a missing file: the last frame is the one before");
}
