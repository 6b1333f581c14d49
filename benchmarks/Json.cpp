#include "benchmarks/Json.h"

#include <cstdio>
#include <fstream>
#include <optional>

namespace {

// Names are plain text: nothing in them but quotation marks and backslashes has to be written differently.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character == '"' || character == '\\' ? "\\" : "";
        quoted += character;
    }
    return quoted + "\"";
}

std::string Number(std::optional<double> value) {
    if (!value) {
        return "null";
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", *value);
    return text;
}

std::string Row(const Figure& figure) {
    const bool isCompared = figure.HasYardstick();
    const auto limit = [&figure](Aim::Of of) {
        return Number(figure.aim.of == of ? std::optional(figure.aim.limit) : std::nullopt);
    };
    return "{\"figure\": " + Quoted(figure.name) +
           ", \"yardstick\": " + (isCompared ? Quoted(figure.yardstickName) : "null") +
           ", \"unit\": " + (figure.unit == Unit::Bytes ? "\"bytes\"" : "\"seconds\"") +
           ", \"ours\": " + Number(figure.ours) +
           ", \"theirs\": " + Number(isCompared ? std::optional(figure.yardstick) : std::nullopt) +
           ", \"ratio\": " + Number(isCompared ? std::optional(figure.ratio) : std::nullopt) +
           ", \"middle half\": [" + Number(figure.low) + ", " + Number(figure.high) + "]" +
           ", \"ratio up to\": " + limit(Aim::Of::Ratio) + ", \"below\": " + limit(Aim::Of::Value) +
           ", \"missed\": " + (figure.IsMissed() ? "true" : "false") + "}";
}

} // namespace

bool WriteJson(const RunSettings& settings, const std::vector<Figure>& figures) {
    std::ofstream file(settings.jsonFile, std::ios::binary);
    file << "{\"quick\": " << (settings.isQuick ? "true" : "false")
         << ", \"busy\": " << (settings.isBusy ? "true" : "false") << ", \"rows\": [";
    const char* separator = "\n";
    for (const Figure& figure : figures) {
        file << separator << Row(figure);
        separator = ",\n";
    }
    file << "\n]}\n";
    file.close();
    return file.good();
}
