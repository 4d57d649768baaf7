// SPDX-License-Identifier: MIT
//
// The command line of zem-import: finds the kind of coverage that is named or that the inputs hold,
// gives the words to the options and the importer, and runs the import.
#pragma once

#include "tools/import/ImportOptions.h"
#include "tools/import/Importer.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

struct ImportKind
{
    const char* _name;   // the word for it
    const char* _inputs; // as the usage shows them
    const char* _purpose;
    std::unique_ptr<Importer> (*_make)();
};

class ImportCommand
{
public:
    // Borrows all for its life.
    ImportCommand(const std::vector<ImportKind>& kinds, const char* version, std::ostream& out,
                  std::ostream& err);

    // `words` are those behind the program's name and end with a null pointer. Returns the exit
    // status: 0 when all went well, else 1 with a message on the error stream.
    int run(char** words);

private:
    // The words as one kind takes them.
    struct Reading
    {
        const ImportKind* _kind = nullptr;
        std::unique_ptr<Importer> _importer;
        ImportOptions _options;
        char** _unknown = nullptr; // the first word that it does not know
    };

    const ImportKind* findKind(const std::string& name) const;
    Reading read(const ImportKind& kind, char** words) const;
    int import(const Reading& reading);
    int guess(char** words);
    int choose(std::vector<Reading>& readings);
    int failToChoose(const std::vector<Reading>& readings, const std::vector<size_t>& fitting);
    bool checkInputs(const std::vector<std::string>& inputs);
    std::string kindsOf(const std::string& input, const std::vector<Reading>& readings) const;
    std::string allKinds() const;
    int clean(char** words);
    void usage(std::ostream& out) const;
    int misuse(const std::string& problem);

    const std::vector<ImportKind>& _kinds;
    const char* _version;
    std::ostream& _out;
    std::ostream& _err;
};
