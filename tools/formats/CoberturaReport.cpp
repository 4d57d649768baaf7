// SPDX-License-Identifier: MIT
#include "tools/formats/CoberturaReport.h"

#include "qip/Support/ListIterator.h"
#include "qip/Support/orEmpty.h"
#include "tools/formats/Percent.h"
#include "tools/formats/ReportContents.h"
#include "tools/formats/XmlText.h"
#include "tools/formats/shownName.h"
#include "tools/formats/writeNumber.h"
#include "zem/Data/ZEMFileRecord.h"
#include "zem/Rows/groupLength.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string_view>
#include <unordered_map>

namespace {

void writeAttribute(std::ostream& out, const char* name, int64_t number)
{
    out << ' ' << name << "=\"";
    writeNumber(out, number);
    out.put('"');
}

// Of branches there is nothing to say, nor of complexity.
void writeRates(std::ostream& out, int64_t run, int64_t found)
{
    out << " line-rate=\"";
    Percent::writeRate(out, run, found);
    out << "\" branch-rate=\"0\" complexity=\"0\"";
}

const char* pathOf(const ZEMFileRecord& file)
{
    return orEmpty(file._filename);
}

} // namespace

void CoberturaReport::write(const ReportContents& contents, std::ostream& out)
{
    gather(contents);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE coverage SYSTEM \"http://cobertura.sourceforge.net/xml/coverage-04.dtd\">\n"
           "<coverage";
    writeRates(out, _whole.run, _whole.found);
    writeAttribute(out, "lines-covered", _whole.run);
    writeAttribute(out, "lines-valid", _whole.found);
    out << " branches-covered=\"0\" branches-valid=\"0\" version=\"" << XmlText(contents._version)
        << '"';
    writeAttribute(out, "timestamp", contents._time * 1000);
    out << ">\n  <sources>\n    <source>";
    if (_root.size() > 1) {
        out << XmlText(_root.substr(0, _root.size() - 1).c_str());
    } else {
        out << (_root.empty() ? "." : "/");
    }
    out << "</source>\n  </sources>\n  <packages>\n";
    for (const Package& package : _packages) {
        writePackage(contents, package, out);
    }
    out << "  </packages>\n</coverage>\n";
}

// Counts before anything is written: the sums come first.
void CoberturaReport::gather(const ReportContents& contents)
{
    ListIterator<ZEMFileRecord*> it(*contents._files);
    while (const ZEMFileRecord* file = it.next()) {
        if (contents._shown->shows(*file)) {
            count(contents, *file);
            _files.push_back({file, {_lines.found(), _lines.run()}, None});
            _whole.found += _lines.found();
            _whole.run += _lines.run();
        }
    }
    findRoot();
    std::unordered_map<std::string_view, size_t> packages;
    for (size_t i = 0; i < _files.size(); ++i) {
        const char* path = shortened(*_files[i].record);
        const auto length = static_cast<size_t>(std::max(directoryLength(path), 0L));
        const std::string_view directory(path, length);
        const auto found = packages.emplace(directory, _packages.size());
        if (found.second) {
            _packages.push_back({std::string(directory), {}, None, None});
        }
        Package& package = _packages[found.first->second];
        package.rate.found += _files[i].rate.found;
        package.rate.run += _files[i].rate.run;
        (package.first == None ? package.first : _files[package.last].next) = i;
        package.last = i;
    }
}

// The longest directory that all files are below, when all paths are absolute.
void CoberturaReport::findRoot()
{
    _root.clear();
    for (size_t i = 0; i < _files.size(); ++i) {
        const char* path = pathOf(*_files[i].record);
        if (path[0] != '/') {
            _root.clear();
            return;
        }
        if (i == 0) {
            _root.assign(path, static_cast<size_t>(directoryLength(path)) + 1);
        }
        const size_t length = std::min(_root.size(), std::strlen(path));
        const auto differs = std::mismatch(path, path + length, _root.begin()).first - path;
        _root.resize(static_cast<size_t>(differs));
        _root.resize(_root.rfind('/') + 1);
    }
}

// The path from the root on.
const char* CoberturaReport::shortened(const ZEMFileRecord& file) const
{
    return pathOf(file) + _root.size();
}

// Fills `_lines` with what is shown of a file.
void CoberturaReport::count(const ReportContents& contents, const ZEMFileRecord& file)
{
    _lines.clear();
    ListIterator<ZEMFuncRecord*> functions(file._funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        if (contents._shown->shows(*function)) {
            _lines.add(function->_blockMap, function->_nBlocks);
        }
    }
    _lines.finish();
}

void CoberturaReport::writePackage(const ReportContents& contents, const Package& package,
                                   std::ostream& out)
{
    std::string name = package.name;
    std::replace(name.begin(), name.end(), '/', '.');
    out << "    <package name=\"" << XmlText(name.c_str()) << '"';
    writeRates(out, package.rate.run, package.rate.found);
    out << ">\n      <classes>\n";
    for (size_t i = package.first; i != None; i = _files[i].next) {
        writeClass(contents, _files[i], out);
    }
    out << "      </classes>\n    </package>\n";
}

void CoberturaReport::writeClass(const ReportContents& contents, const File& file,
                                 std::ostream& out)
{
    const char* path = shortened(*file.record);
    out << "        <class name=\"" << XmlText(path + directoryLength(path) + 1) << "\" filename=\""
        << XmlText(path) << '"';
    writeRates(out, file.rate.run, file.rate.found);
    out << ">\n          <methods>\n";
    _methodLines = 0;
    ListIterator<ZEMFuncRecord*> functions(file.record->_funcList);
    while (const ZEMFuncRecord* function = functions.next()) {
        if (contents._shown->shows(*function)) {
            writeMethod(contents, *function, out);
        }
    }
    out << "          </methods>\n          <lines>\n";
    count(contents, *file.record);
    writeLines("            ", out);
    out << "          </lines>\n        </class>\n";
}

// The name without parameters and these as the signature, where the level has them.
void CoberturaReport::writeMethod(const ReportContents& contents, const ZEMFuncRecord& function,
                                  std::ostream& out)
{
    const char* stored = orEmpty(function._funcname);
    const std::string whole = shownName(stored, contents.lineLevel());
    std::string name = shownName(stored, SimpleNames);
    if (contents.lineLevel() == StoredNames || whole.compare(0, name.size(), name) != 0) {
        name = whole;
    }
    _lines.clear();
    _lines.add(function._blockMap, function._nBlocks);
    _lines.finish();
    out << "            <method name=\"" << XmlText(name.c_str()) << "\" signature=\""
        << XmlText(whole.c_str() + name.size()) << '"';
    writeRates(out, _lines.run(), _lines.found());
    out << ">\n              <lines>\n";
    if (_lines.found() <= MostMethodLines - _methodLines) {
        _methodLines += _lines.found();
        writeLines("                ", out);
    }
    out << "              </lines>\n            </method>\n";
}

void CoberturaReport::writeLines(const char* indent, std::ostream& out) const
{
    for (const LineCounts::Line& line : _lines.lines()) {
        out << indent << "<line";
        writeAttribute(out, "number", line.number);
        writeAttribute(out, "hits", line.hits);
        out << " branch=\"false\"/>\n";
    }
}
