// Reading and writing JSON, beside a well-known library on the same text. Each side works on what it has by nature: UTF-16
// in OdString here, UTF-8 in std::string there. Reading includes destroying the value.
//
// The two differ in what they promise: ours writes reals with 16 digits behind the point, theirs with as few as tell the
// value, so the written texts are not the same.

#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include "table.h"
#include "json/od_string_json.h"

namespace {

using tsutils::json::wmValue;

// A list of enumerations, the one structured text that the library looks into, with some of everything.
std::string listOf(std::size_t bytes) {
  std::string text = "[";
  for (int i = 0; text.size() < bytes; ++i) {
    const std::string number = std::to_string(i);
    text += R"({"type":"Enum","name":"Fire rating of leaf )" + number +
            R"(","values":["REI 30","REI 60","EI 90 S200 C5",)" + R"("nicht gepr\u00fcft","\"other\"","ohne Gew)" +
            "\xC3\xA4" + R"(hr"],"codes":[)" + number + ",-" + number + ",4711,0],\"factor\":" + number +
            R"(.25,"offset":-0.125,"visible":true,"unit":null,"empty":{}},)";
  }
  text.back() = ']';
  return text;
}

const std::string& narrowText() {
  static const std::string text = listOf(10'000'000);
  return text;
}

const OdString& wideText() {
  static const OdString text = OdString::fromUtf8(narrowText());
  return text;
}

void count(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(narrowText().size()));
}

void readTessel(benchmark::State& state) {
  const OdString& text = wideText();
  for (auto _ : state) benchmark::DoNotOptimize(tsutils::json::read(text));
  count(state);
}

void readOther(benchmark::State& state) {
  const std::string& text = narrowText();
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(text));
  count(state);
}

void writeTessel(benchmark::State& state) {
  const wmValue value = tsutils::json::read(wideText());
  for (auto _ : state) {
    OdString text;
    write(value, text, false);
    benchmark::DoNotOptimize(text.c_str());
  }
  count(state);
}

void writeOther(benchmark::State& state) {
  const nlohmann::json value = nlohmann::json::parse(narrowText());
  for (auto _ : state) benchmark::DoNotOptimize(value.dump());
  count(state);
}

void copyTessel(benchmark::State& state) {
  const wmValue value = tsutils::json::read(wideText());
  for (auto _ : state) benchmark::DoNotOptimize(wmValue(value));
  count(state);
}

void copyOther(benchmark::State& state) {
  const nlohmann::json value = nlohmann::json::parse(narrowText());
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json(value));
  count(state);
}

using Body = void (*)(benchmark::State&);

void compare(const std::string& work, Body ours, Body other, double aim = 1) {
  const auto withAim = [ours, aim](benchmark::State& state) {
    ours(state);
    state.counters["aim"] = aim;
  };
  benchmark::RegisterBenchmark(("compare/" + work + "/tessel").c_str(), withAim)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark(("compare/" + work + "/nlohmann").c_str(), other)->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  compare("read_10_MB_of_JSON,_other:_nlohmann", &readTessel, &readOther);
  compare("write_10_MB_of_JSON", &writeTessel, &writeOther);
  compare("copy_10_MB_of_JSON", &copyTessel, &copyOther, 1.25);
  tessel::benchmarks::Table table;
  benchmark::RunSpecifiedBenchmarks(&table);
  return table.missed() == 0 ? 0 : 1;
}
