// The host program: opens a design file and prints what the kernel read from it.
//
//     qzhost [design-file]
//
// Without an argument it opens the four-layer sample board. A file that cannot be read prints
// the kernel's error text on stderr and ends with status 1.
#include "IcmApiEcad.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/DesignFile.h"
#include "qzref/Journal.h"

#include <cstdio>
#include <string>

#ifndef QZ_EXAMPLES_DIR
#define QZ_EXAMPLES_DIR "examples"
#endif

namespace {

void PrintObjects(char const* title, std::vector<qzref::DesignObject*> const& objects) {
    std::printf("%s: %zu\n", title, objects.size());
    for (auto const* object : objects) {
        std::printf("  %s (", object->name.c_str());
        char const* separator = "";
        for (auto const* child : object->children) {
            std::printf("%s%s", separator, child->name.c_str());
            separator = " ";
        }
        std::printf(")\n");
    }
}

void PrintBoard(qzk::ecad::EcadPCBData const& board) {
    std::printf("kind: %s\ntop: %d, bottom: %d\n", board.IsOverlayData() ? "overlay" : "board",
                board.GetTop(), board.GetBottom());
    for (auto const& [handle, name] : board.GetLayers()) {
        std::printf("layer %d %s\n", handle, name.c_str());
        for (auto const* key : board.sublayers) {
            auto const* sublayer = dynamic_cast<qzk::ecad::SublayerPCB const*>(key);
            if (sublayer == nullptr || sublayer->layer != handle) {
                continue;
            }
            std::printf("  sublayer %d %s colour %s%s%s\n", sublayer->sublayer,
                        qzref::Fmt(sublayer->label).c_str(),
                        qzref::Fmt(qzref::ColorWord{sublayer->color}).c_str(),
                        sublayer->visible ? "" : " hidden",
                        qzk::ecad::EcadPCBData::IsRegionHandle(handle, sublayer->sublayer)
                            ? " region"
                            : "");
        }
    }
    PrintObjects("components", board.GetComponents());
    PrintObjects("nets", board.GetNets());
}

void PrintSchematic(qzk::ecad::SchematicData const& schematic) {
    std::printf("kind: schematic\n");
    for (auto const& [handle, name] : schematic.layerNames) {
        std::printf("layer %d %s%s\n", handle, qzref::Fmt(name).c_str(),
                    schematic.HasLayerContent(handle) ? "" : " empty");
    }
    for (unsigned int sheet = 0; sheet < schematic.GetNumSheets(); ++sheet) {
        std::printf("sheet %u %s: %zu objects\n", sheet, schematic.GetSheetName(sheet).c_str(),
                    schematic.GetObjectsOnSheet(sheet).size());
    }
    PrintObjects("components", schematic.GetComponents());
    std::printf("nets: %zu\n", schematic.GetNets().size());
    for (auto const* net : schematic.GetNets()) {
        std::printf("  %s on sheets %s\n", net->name.c_str(),
                    qzref::Fmt(schematic.GetNetSheets(net)).c_str());
    }
}

} // namespace

int main(int argc, char** argv) {
    std::string const path =
        argc > 1 ? argv[1] : std::string(QZ_EXAMPLES_DIR) + "/designs/four-layer-board.json";
    qzref::DesignReadResult const read = qzref::ReadDesignFile(path);
    if (read.status != 0) {
        std::fprintf(stderr, "%s (result %ld)\n", read.errorText.c_str(), read.result);
        return 1;
    }
    auto const* design = dynamic_cast<qzk::ecad::EcadDesignData const*>(read.data.Get());
    std::printf("design: %s%s\n", qzref::Fmt(read.data->GetDesignName().str()).c_str(),
                read.result == 3 ? " (newer format, read all the same)" : "");
    if (auto const* board = dynamic_cast<qzk::ecad::EcadPCBData const*>(design)) {
        PrintBoard(*board);
    } else if (auto const* schematic = dynamic_cast<qzk::ecad::SchematicData const*>(design)) {
        PrintSchematic(*schematic);
    } else {
        std::printf("kind: images\n");
    }
    std::printf("images: %zu\n", design->GetImages().size());
    for (auto const* image : design->GetImages()) {
        std::printf("  %s kind %d%s\n", image->name.c_str(), image->kind,
                    image->picture ? "" : " (no picture)");
    }
    return 0;
}
