#pragma once

#include <string>

/// The shared vocabulary: appearance type names, property keys and library names. The values are stored in documents
/// and cross the network, so they never change. Each translation unit gets its own copy, as hosts expect.

// ---- appearance types: names of templates
const std::string APPEARANCE_TYPE_BRICK = "Brick";
const std::string APPEARANCE_TYPE_CARPET = "Carpet";
const std::string APPEARANCE_TYPE_CONCRETE = "Concrete";
const std::string APPEARANCE_TYPE_FIELD = "Field";
const std::string APPEARANCE_TYPE_FOUNDATION_SOIL = "FoundationSoil";
const std::string APPEARANCE_TYPE_GENERIC = "Generic";
const std::string APPEARANCE_TYPE_GLASS = "Glass";
const std::string APPEARANCE_TYPE_GROUND = "Ground";
const std::string APPEARANCE_TYPE_LEATHER = "Leather";
const std::string APPEARANCE_TYPE_MEASURES = "Measures";
const std::string APPEARANCE_TYPE_METAL = "Metal";
const std::string APPEARANCE_TYPE_METAL_SIMPLE = "MetalSimple";
const std::string APPEARANCE_TYPE_PAINT = "Paint";
const std::string APPEARANCE_TYPE_PLASTIC = "Plastic";
const std::string APPEARANCE_TYPE_ROOF = "Roof";
const std::string APPEARANCE_TYPE_SIMPLE = "Simple";
const std::string APPEARANCE_TYPE_STONE = "Stone";
const std::string APPEARANCE_TYPE_TILES_PLAIN = "TilesPlain";
const std::string APPEARANCE_TYPE_WALLPAPER = "Wallpaper";
const std::string APPEARANCE_TYPE_WOOD = "Wood";

// ---- property keys
const std::string APPEARANCE_AMBIENT_COLOR = "ambient_color";
const std::string APPEARANCE_BUMP_TEXTURE = "bump_texture";
const std::string APPEARANCE_TEMPLATE = "template";
const std::string APPEARANCE_DIFFUSE_COLOR = "diffuse_color";
const std::string APPEARANCE_DIFFUSE_TEXTURE = "diffuse_texture";
const std::string APPEARANCE_EDIT_TYPE = "edit_type";
const std::string APPEARANCE_ENABLE_BUMP = "enableBump";
const std::string APPEARANCE_ENABLE_IBL = "enableIBL";
const std::string APPEARANCE_ID = "id";
const std::string APPEARANCE_IOR = "ior";
const std::string APPEARANCE_LIGHT_COLOR = "lightColor";
const std::string APPEARANCE_LIGHT_POWER = "lightPower";
const std::string APPEARANCE_METALLIC = "metallic";
const std::string APPEARANCE_NAME = "name";
const std::string APPEARANCE_ROUGHNESS = "roughness";
const std::string APPEARANCE_SHININESS = "shininess";
const std::string APPEARANCE_SPECULAR_COLOR = "specular_color";
const std::string APPEARANCE_TAGS = "tags";
const std::string APPEARANCE_TEXTURE_FILE = "texture_file";
const std::string APPEARANCE_TRANSPARENT = "transparent";
const std::string APPEARANCE_USE_BASE_TEXTURE = "useBaseTexture";
const std::string APPEARANCE_USE_ENVIRONMENT_MAP = "useEnvironmentMap";

// ---- library names, also the names of their folders
const std::string FAVORITE_LIBRARY_NAME = "Favorite Library";
const std::string SYSTEM_LIBRARY_NAME = "System Library";
const std::string CUSTOMER_LIBRARY_NAME = "Customer Library";
