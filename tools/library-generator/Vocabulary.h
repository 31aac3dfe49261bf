#pragma once

/// The words that generated appearances are made of.
namespace Vocabulary {

struct Word {
    const char* english;
    const char* chinese;
};

const Word colours[] = {{"Red", "红色"},     {"Yellow", "黄色"}, {"Blue", "蓝色"},     {"Green", "绿色"},
                        {"White", "白色"},   {"Black", "黑色"},  {"Grey", "灰色"},     {"Beige", "米色"},
                        {"Brown", "棕色"},   {"Ochre", "赭色"},  {"Silver", "银色"},   {"Anthracite", "炭灰"},
                        {"Ivory", "象牙色"}, {"Sage", "灰绿"},   {"Burgundy", "酒红"}, {"Petrol", "孔雀蓝"}};

const Word finishes[] = {{"polished", "抛光"}, {"matt", "哑光"},     {"brushed", "拉丝"}, {"sawn", "机切面"},
                         {"oiled", "木蜡油"},  {"rough", "粗面"},    {"honed", "细磨"},   {"weathered", "风化"},
                         {"glazed", "釉面"},   {"textured", "肌理"}, {"satin", "半哑"},   {"embossed", "压纹"}};

const Word tags[] = {
    {"exterior", "外墙"},   {"interior", "室内"}, {"floor", "地面"},       {"wall", "墙面"},     {"ceiling", "吊顶"},
    {"roof", "屋面"},       {"kitchen", "厨房"},  {"bathroom", "卫生间"},  {"facade", "幕墙"},   {"furniture", "家具"},
    {"garden", "花园"},     {"terrace", "露台"},  {"lobby", "大堂"},       {"office", "办公"},   {"hotel", "酒店"},
    {"hospital", "医院"},   {"school", "学校"},   {"museum", "展厅"},      {"stair", "楼梯"},    {"partition", "隔断"},
    {"warm", "暖色"},       {"cool", "冷色"},     {"natural", "天然"},     {"recycled", "再生"}, {"acoustic", "吸声"},
    {"fire-rated", "防火"}, {"outdoor", "户外"},  {"traditional", "传统"}, {"modern", "现代"},   {"seamless", "无缝"}};

const char* const groups[] = {"Standard", "Classic", "Modern", "Outdoor", "Indoor", "Facade", "Floor", "Special"};

const char* const textures[] = {
    "brick_red_running",   "brick_clinker_dark",  "wood_oak",          "wood_walnut",
    "stone_travertine",    "stone_slate",         "plaster_fine",      "metal_corten",
    "metal_brushed_steel", "roof_clay_pantile",   "tile_square_white", "carpet_loop_grey",
    "wallpaper_linen",     "leather_brown",       "ground_grass",      "ground_gravel",
    "soil_loam",           "fabric_canvas_weave", "plastic_ripple",    "concrete_board_formed"};

}  // namespace Vocabulary
