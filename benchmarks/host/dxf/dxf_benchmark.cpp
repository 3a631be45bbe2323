// Reading and writing drawings of several sizes: lines, polylines, splines, block references with
// attributes. Bytes a second; the drawing is made here, so that every run sees the same. With
// CORVANE_BENCHMARK_DRAWING=PATH the largest one is also written there, for a look with other programs.
//
// Measured on two shared cores, 20 MB of text, milliseconds; ezdxf 0.18 reading the same file beside it:
//   reading text       71   (282 MB/s)   ezdxf 2790, 39 times
//   without handles   108   (181 MB/s)   ezdxf 3172, 29 times
//   reading binary     40   (305 MB/s)
//   writing text       64   (334 MB/s)
//   writing binary     21   (586 MB/s)
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>

#include "host/db/database.h"
#include "host/dxf/dxf.h"
#include "host/ent/register.h"
#include "host/os/numbers.h"

namespace {

class Maker {
public:
    explicit Maker(size_t size) : size_(size) {
        section("HEADER", "9\n$ACADVER\n1\nAC1032\n");
        section("TABLES", layers() +
                              "0\nTABLE\n2\nBLOCK_RECORD\n5\n1\n330\n0\n100\nAcDbSymbolTable\n70\n2\n" +
                              record("1F", "*Model_Space") + record("20", "Tree") + "0\nENDTAB\n");
        section("BLOCKS",
                "0\nBLOCK\n5\n21\n330\n20\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockBegin\n2\nTree\n70\n0\n"
                "10\n0.0\n20\n0.0\n30\n0.0\n3\nTree\n1\n\n0\nENDBLK\n5\n22\n330\n20\n100\nAcDbEntity\n8\n0\n"
                "100\nAcDbBlockEnd\n");
        out_ += "0\nSECTION\n2\nENTITIES\n";
        for (int kind = 0; out_.size() < size_; kind = (kind + 1) % 8) entity(kind);
        out_ += "0\nENDSEC\n0\nEOF\n";
    }
    const std::string& bytes() const { return out_; }

private:
    static std::string record(const char* handle, const char* name) {
        return std::string("0\nBLOCK_RECORD\n5\n") + handle +
               "\n330\n1\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\n" + name + "\n";
    }
    static std::string layers() {
        std::string table =
            "0\nTABLE\n2\nLTYPE\n5\n5\n330\n0\n100\nAcDbSymbolTable\n70\n1\n0\nLTYPE\n5\n16\n330\n5\n"
            "100\nAcDbSymbolTableRecord\n100\nAcDbLinetypeTableRecord\n2\nContinuous\n70\n0\n"
            "3\nSolid line\n72\n65\n73\n0\n40\n0.0\n0\nENDTAB\n"
            "0\nTABLE\n2\nLAYER\n5\n2\n330\n0\n100\nAcDbSymbolTable\n70\n20\n";
        for (int i = -1; i < 20; ++i) {
            const std::string handle = std::to_string(31 + i);
            const std::string name = i < 0 ? "0" : "Layer" + std::to_string(i);
            table += "0\nLAYER\n5\n" + handle +
                     "\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n2\n";
            table += name + "\n70\n0\n62\n7\n6\nContinuous\n";
        }
        return table + "0\nENDTAB\n";
    }
    void section(const char* name, const std::string& groups) {
        out_ += std::string("0\nSECTION\n2\n") + name + "\n" + groups + "0\nENDSEC\n";
    }
    void group(int code, double value) {
        out_ += std::to_string(code) + "\n";
        host::appendReal(out_, value);
        out_ += '\n';
    }
    void group(int code, const std::string& value) { out_ += std::to_string(code) + "\n" + value + "\n"; }
    void point(int code, int dimensions = 3) {
        for (int i = 0; i < dimensions; ++i) group(code + 10 * i, i < 2 ? place_(random_) : 0.0);
    }
    void head(const char* kind, const char* marker) {
        char handle[20];
        std::snprintf(handle, sizeof handle, "%X", ++handle_);
        group(0, kind), group(5, handle), group(330, "1F"), group(100, "AcDbEntity");
        group(8, "Layer" + std::to_string(handle_ % 20)), group(62, std::to_string(handle_ % 7 + 1));
        group(100, marker);
    }
    void entity(int kind) {
        if (kind < 4) {
            head("LINE", "AcDbLine"), point(10), point(11);
        } else if (kind < 6) {
            head("LWPOLYLINE", "AcDbPolyline"), group(90, "40"), group(70, "1");
            for (int i = 0; i < 40; ++i) {
                point(10, 2);
                if (i % 4 == 0) group(42, 0.25);
            }
        } else if (kind == 6) {
            spline();
        } else {
            head("INSERT", "AcDbBlockReference"), group(2, "Tree"), point(10), group(50, 30.0);
        }
    }
    void spline() {
        constexpr int kPoints = 24, kDegree = 3;
        head("SPLINE", "AcDbSpline"), group(70, "8"), group(71, "3"),
            group(72, std::to_string(kPoints + kDegree + 1));
        group(73, std::to_string(kPoints)), group(74, "0");
        for (int i = 0; i < kPoints + kDegree + 1; ++i)
            group(40, double(std::clamp(i - kDegree, 0, kPoints - kDegree)));
        for (int i = 0; i < kPoints; ++i) point(10);
    }

    size_t size_;
    std::string out_;
    std::mt19937_64 random_{7};
    std::uniform_real_distribution<double> place_{0, 100000};
    unsigned handle_ = 0x100;
};

const std::string& drawing(size_t megabytes) {
    static std::map<size_t, std::string> made;
    std::string& bytes = made[megabytes];
    if (!bytes.empty()) return bytes;
    host::registerEntityClasses();
    bytes = Maker(megabytes << 20).bytes();
    const char* path = std::getenv("CORVANE_BENCHMARK_DRAWING");
    if (path && megabytes == 20) std::ofstream(path, std::ios::binary) << bytes;
    return bytes;
}

// The drawing with its entities' handles and owners left out.
std::string withoutHandles(const std::string& bytes) {
    const size_t entities = bytes.find("2\nENTITIES\n");
    std::string out = bytes.substr(0, entities);
    for (size_t at = entities; at < bytes.size();) {
        const size_t value = bytes.find('\n', at) + 1, next = bytes.find('\n', value) + 1;
        const std::string_view code(bytes.data() + at, value - at - 1);
        if (code != "5" && code != "330") out.append(bytes, at, next - at);
        at = next;
    }
    return out;
}

void readText(benchmark::State& state) {
    const std::string& bytes = drawing(size_t(state.range(0)));
    for (auto _ : state) {
        AcDbDatabase database(false);
        const host::ReadReport report = host::readDrawingBytes(bytes, "benchmark", database);
        if (!report.ok) state.SkipWithError(report.message.c_str());
    }
    state.SetBytesProcessed(std::int64_t(bytes.size()) * state.iterations());
}

// Without handles a second pass looks for those that mustn't be given out.
void readWithoutHandles(benchmark::State& state) {
    const std::string bytes = withoutHandles(drawing(size_t(state.range(0))));
    for (auto _ : state) {
        AcDbDatabase database(false);
        const host::ReadReport report = host::readDrawingBytes(bytes, "benchmark", database);
        if (!report.ok) state.SkipWithError(report.message.c_str());
    }
    state.SetBytesProcessed(std::int64_t(bytes.size()) * state.iterations());
}

void readBinary(benchmark::State& state) {
    AcDbDatabase source(false);
    host::readDrawingBytes(drawing(size_t(state.range(0))), "benchmark", source);
    host::WriteOptions options;
    options.binary = true;
    const std::string bytes = host::drawingBytes(source, options);
    for (auto _ : state) {
        AcDbDatabase database(false);
        benchmark::DoNotOptimize(host::readDrawingBytes(bytes, "benchmark", database));
    }
    state.SetBytesProcessed(std::int64_t(bytes.size()) * state.iterations());
}

void write(benchmark::State& state, bool binary) {
    AcDbDatabase source(false);
    host::readDrawingBytes(drawing(size_t(state.range(0))), "benchmark", source);
    host::WriteOptions options;
    options.binary = binary;
    size_t size = 0;
    for (auto _ : state) size = host::drawingBytes(source, options).size();
    state.SetBytesProcessed(std::int64_t(size) * state.iterations());
}
void writeText(benchmark::State& state) { write(state, false); }
void writeBinary(benchmark::State& state) { write(state, true); }

BENCHMARK(readText)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(readWithoutHandles)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(readBinary)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(writeText)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(writeBinary)->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace
