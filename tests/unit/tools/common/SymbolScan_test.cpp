// SPDX-License-Identifier: MIT
#include "tools/common/SymbolScan.h"

#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <fstream>
#include <gtest/gtest.h>

namespace {

size_t lengthOfText(const std::string& symbol)
{
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
    const size_t length = text != nullptr ? std::strlen(text) : 0;
    std::free(text);
    return length;
}

// One symbol or two for each arm of the encoding, as g++ and clang++ write them, and the few that
// they do not write but the decoder reads.
const char* const armSymbols[] = {
    // Types.
    "_Z1qM1AKFivEMS_FivREMS_DoFivOEMS_iPDoFvvEPFvizEPVKi",
    "_Z2btnowDsDieahstDnbfz",
    "_Z2cxCdCf",
    "_Z3vecDv4_i",
    "_Z2fnOFviEPFPA3_icEPFvzE",
    "_Z4d_arIiEvRA5_T_RA2_A123_DTstS0_E",
    "_Z5d_arnIiLi5EEvRAT0__T_PAplT0_Li1E_S0_",
    "_Z2ttI1WEvT_IiE",
    "_Z3ttpI1WJilEEvDpT_IT0_E",
    "_Z4ttpkI1LJicEEvT_IJDpT0_EE",
    "_Z2c8IiLDu120EEvT_Du",
    "_Z1fu6__uuid",
    "_Z1fu3setIilE",
    // Template arguments: addresses, members, numbers, objects.
    "_Z2naIXadL_Z2glEEEvv",
    "_Z2nfIXadL_Z2fuiEEEvv",
    "_Z2nmIXadL_ZN1A1mEEEEvv",
    "_Z3nmfIXadL_ZN1A1fEvEEEvv",
    "_Z2nnILDn0EEvv",
    "_Z2nlILb1ELc120ELln3EL1E0ELy18446744073709551615EEvv",
    "_Z3dblILd3ff8000000000000EEvv",
    "_Z2ntIXtl1NLi1ELd4004000000000000EEEEvv",
    // Expressions: members, new and delete, casts, questions about types, operators.
    "_Z4d_dtI1AS0_EDTplpldtfp_1mptfp0_1mptptfp0_1p1mET_PT0_",
    "_Z5d_dtgI1AS0_EDTplcldtfp_1gIiEEclptfp0_1gIlEEET_PT0_",
    "_Z5d_dtqI1AS0_EDTplplpldtfp_srS0_1mptfp0_srT_1msrS1_1scldtcvS1__E1fEES1_PT0_",
    "_Z4d_nwIilEDTcmnw_T_Ecvv_EES0_T0_",
    "_Z5d_nw2IilEDTcmnw_T_pifp0_Ecvv_EES0_T0_",
    "_Z5d_nw3IilEDTcmgsnaadfp__A3_T_Ecvv_EES0_T0_",
    "_Z5d_nw4IiiEDTcmnw_T_ilfp0_Ecvv_EES0_T0_",
    "_Z5d_delIilEDTcmdladfp_cvv_EET_T0_",
    "_Z6d_del2IilEDTcmgsdaadfp_cvv_EET_T0_",
    "_Z4d_dcI1AS0_EDTcmdcPT_adfp0_cvv_EES1_T0_",
    "_Z4d_scIilEDTcmscT_fp0_cvv_EES0_T0_",
    "_Z4d_ccIilEDTcmccPT_adfp_cvv_EES0_T0_",
    "_Z4d_rcIilEDTcmrcPT_adfp0_cvv_EES0_T0_",
    "_Z4d_cvIilEDTcmcvT_fp0_cvv_EES0_T0_",
    "_Z5d_cv2IilEDTcmcvT__Ecvv_EES0_T0_",
    "_Z4d_tlIiiEDTcmtlT_fp0_Ecvv_EES0_T0_",
    "_Z4d_ilIiEDTcmcmcmcv1WIT_Eilfp_EtlS2_fp_Enw_S2_ilfp_Ecvv_EES1_",
    "_Z4d_azIilEDTcmatT_cvv_EES0_T0_",
    "_Z4d_stIilEDTcmstT_cvv_EES0_T0_",
    "_Z4d_tiIilEDTcmtiT_cvv_EES0_T0_",
    "_Z4d_teIilEDTcmtefp_cvv_EET_T0_",
    "_Z4d_nxIilEDTcmnxplfp_fp0_cvv_EET_T0_",
    "_Z4d_twIilEDTcmtwfp_cvv_EET_T0_",
    "_Z4d_trIiEDTcmtrcvv_EET_",
    "_Z3d_qIilEDTcmqufp_fp0_fp0_cvv_EET_T0_",
    "_Z4d_adIilEDTcmdeadfp_cvv_EET_T0_",
    "_Z4d_ixIilEDTixfp_fp0_EPT_T0_",
    "_Z4d_pmI1AiEDTpldsfp_fp0_pmfp1_fp0_ET_MS2_T0_PS2_",
    "_Z5d_asgIilEDTcmaSfp_fp0_cvv_EET_T0_",
    "_Z6d_asg2IilEDTcmcmcmcmcmpLfp_fp0_mIfp_fp0_mLfp_fp0_dVfp_fp0_rMfp_fp0_cvv_EET_T0_",
    "_Z6d_asg3IilEDTcmcmcmcmcmaNfp_fp0_oRfp_fp0_eOfp_fp0_lSfp_fp0_rSfp_fp0_cvv_EET_T0_",
    "_Z5d_bitIilEDTcmrslsoranfp_fp0_eofp_fp0_Li1Efp0_cvv_EET_T0_",
    "_Z5d_cmpIilEDTcmcmcmcmcmcmltfp_fp0_gtfp_fp0_lefp_fp0_gefp_fp0_eqfp_fp0_nefp_fp0_cvv_EET_T0_",
    "_Z4d_ssI1AS0_EDTssfp_fp0_ET_T0_",
    "_Z5d_comIilEDTcmcofp_cvv_EET_T0_",
    "_Z5d_logIilEDTcmooaafp_fp0_ntfp_cvv_EET_T0_",
    "_Z5d_negIilEDTcmngfp_cvv_EET_T0_",
    "_Z6d_ops2IilEDTcmmifp_rmdvmlfp0_fp_fp0_fp_cvv_EET_T0_",
    "_Z5d_posIilEDTcmpsfp_cvv_EET_T0_",
    "_Z5d_preIilEDTcmpp_fp_cvv_EET_T0_",
    "_Z6d_predIilEDTcmmm_fp_cvv_EET_T0_",
    "_Z6d_postIilEDTcmppfp_cvv_EET_T0_",
    "_Z7d_postdIilEDTcmmmfp_cvv_EET_T0_",
    "_Z4d_fqIiEDTplfpK_fpV0_ET_S1_",
    "_Z6d_callIZ4mainEUliiE_iEDTclfp_fp0_fp0_EET_T0_",
    "_Z1fI1WIiEENDtfp_E4typeET_",
    "_Z5d_dt1I1WIiEENDTcvT__EE4typeES2_",
    // Parameter packs.
    "_Z4d_sZIJil1AEE1ZIXplsZT_sZfp_EEDpT_",
    "_Z4d_sPIJilEEvRAsPDpT_E_i",
    "_Z4d_spIJilP1AEE1LIJDpPT_EEDpS3_",
    "_Z5d_spnIJLi1ELi2ELi3EEE1IIJXspplT_Li1EEEES0_IJXspT_EEE",
    "_Z5d_spxIJilEEDTtl1LIJDpDTplfp_Li1EEEEEEDpT_",
    "_Z4d_flIJiiiEEDTflplfp_EDpT_",
    "_Z4d_frIJiiEEDTfrplfp_EDpT_",
    "_Z4d_fLIJiiEEDTfLplLi1Efp_EDpT_",
    "_Z4d_fRIJilEEDTfRplfp_Li1EEDpT_",
    "_Z3fwdIJilEEvDpPFvT_27AVeryLongNameOfAClassIndeedE",
    "_Z3cntIJilP1AEE1LIJDpPF1WI27AVeryLongNameOfAClassIndeedET_EEEDpS6_",
    "_Z3tpkIJilEEv1LIJDpT_EEDp1WIS1_E",
    // Names: operators, constructors, tags, what is local to a function, what the compiler makes.
    "_ZN3OpsaSERKS_",
    "_ZN3OpsdlEPv",
    "_ZN3OpsnwEm",
    "_ZN3OpscvbEv",
    "_ZNO1KlSEi",
    "_ZNVKR1KaNEi",
    "_ZN4ConvcvPT_I1AEEv",
    "_ZN2CxcvT_IiEI2P0EEv",
    "_ZZN1ScvPT_I1AEEvEN1Q1fES4_S_PS3_27AVeryLongNameOfAClassIndeedS6_",
    "_Zli3_kme",
    "_Z4tagfB3cxxB4morev",
    "_ZN6TaggedB3cxxB4moreC1Ev",
    "_ZN3In2CI13In1Ei",
    "_ZN3In1C1IiEET_S1_",
    "_ZN12_GLOBAL__N_14anonENS_2AnE",
    "_ZN1fDC1a1bEEv",
    "_ZN5OuterIiE3MidIlE2goIdEEvilT_N1WIS4_E4typeE",
    "_ZZ3twovE1a_0",
    "_ZZ3twovE1a__12_",
    "_ZZ3locivEs",
    "_ZZ3lociEd_N2Lo1fEi",
    "_ZZ3lociEN2Lo1fEi",
    "_ZZ3lociENKUlT_PT0_E_clIiiEEDaS_S1_",
    "_ZZNK3Ini1aMUliE_clEiEN2Lo1fEv",
    "_ZNK2glMUlRAT0__T_E_clIiLi3EEEDaS1_",
    "_ZGVZ3lociE2st",
    "_ZTH2tl",
    "_ZTW2tl",
    "_ZTIN1A1BE",
    "_ZTS1A",
    "_ZTT2Vi",
    "_ZTV1A",
    "_ZThn24_N2Vj2vvEv",
    "_ZTv0_n24_N2ViD0Ev",
    "_ZTch0_h16_N2Vj5otherEv",
};

TEST(SymbolScanTest, KnowsEveryKindOfNameAndItsGreatestLength)
{
    std::ifstream in(ZEM_TEST_DATA "/names/symbols.txt");
    int count = 0;
    for (std::string line; std::getline(in, line); ++count) {
        const std::string symbol = line.substr(0, line.find('\t'));
        const SymbolScan scan = scanSymbol(symbol);
        EXPECT_TRUE(scan._isKnown) << symbol;
        EXPECT_GE(scan._length, lengthOfText(symbol)) << symbol;
        EXPECT_LE(scan._length, 10 * line.size()) << symbol;
    }
    EXPECT_GT(count, 250);
}

// Where the installed decoder does not know a symbol there is no length to compare with.
TEST(SymbolScanTest, KnowsEveryArmOfTheEncoding)
{
    for (const char* symbol : armSymbols) {
        const SymbolScan scan = scanSymbol(symbol);
        EXPECT_TRUE(scan._isKnown) << symbol;
        EXPECT_GE(scan._length, lengthOfText(symbol)) << symbol;
        EXPECT_LE(scan._length, 20 * std::strlen(symbol)) << symbol;
    }
}

// One part of a symbol, for as often as one likes: `_unit` opens it and `_close` closes it around
// `_middle`, or they follow each other.
struct Repeated
{
    const char* _start;
    const char* _unit;
    const char* _middle;
    const char* _close;
    const char* _end;

    std::string symbol(int times) const
    {
        std::string result = _start;
        for (int i = 0; i < times; ++i) {
            result += _unit;
        }
        result += _middle;
        for (int i = 0; i < times; ++i) {
            result += _close;
        }
        return result + _end;
    }
};

const Repeated repeated[] = {
    // Types.
    {"_Z1f", "P", "i", "", ""},
    {"_Z1f", "C", "d", "", ""},
    {"_Z1f", "G", "d", "", ""},
    {"_Z1f", "PK", "i", "", ""},
    {"_Z1f", "PVK", "i", "", ""},
    {"_Z1f", "rVK", "i", "", ""},
    {"_Z1f", "A1_", "i", "", ""},
    {"_Z1f", "A123456789_", "i", "", ""},
    {"_Z1f", "M1a", "i", "", ""},
    {"_Z1f", "U7changed", "i", "", ""},
    {"_Z1f", "PF", "i", "vE", ""},
    {"_Z1f", "PDoF", "i", "vE", ""},
    {"_Z1f", "M1aKFi", "v", "OE", ""},
    {"_Z1f", "Dv4_", "i", "", ""},
    {"_Z1f", "1aI", "i", "E", ""},
    {"_Z1f", "N1a1bI", "i", "EE", ""},
    {"_Z1f", "u1aI", "i", "E", ""},
    {"_Z1f", "y", "", "", ""},
    {"_Z1f", "Dn", "", "", ""},
    {"_Z1f", "De", "", "", ""},
    {"_Z1f", "u6__uuid", "", "", ""},
    {"_Z1f", "St1a", "", "", ""},
    {"_Z1f", "Ss", "", "", ""},
    {"_Z1f", "Sa", "", "", ""},
    {"_Z1f", "Sd", "", "", ""},
    {"_Z1f29a_class_with_a_name_of_length", "S_", "", "", ""},
    {"_Z1fI29a_class_with_a_name_of_lengthEv", "T_", "", "", ""},
    {"_Z1fIJ29a_class_with_a_name_of_lengthiiiiiiEEv", "DpPT_", "", "", ""},
    {"_Z1fIiEv", "DTfp_E", "", "", ""},
    {"_Z1fIiEv", "DTfL0p_E", "", "", ""},
    {"_Z1f", "Dp", "i", "", ""},
    // Template arguments.
    {"_Z1fI", "Li1E", "", "", "Evv"},
    {"_Z1fI", "Lin123456789E", "", "", "Evv"},
    {"_Z1fI", "L1a1E", "", "", "Evv"},
    {"_Z1fI", "L_Z1aE", "", "", "Evv"},
    {"_Z1fI", "XadL_Z1aiEE", "", "", "Evv"},
    {"_Z1fI", "J", "i", "E", "Evv"},
    {"_Z1fIJ", "i", "", "", "EEvDpT_"},
    {"_Z1fIJ", "i", "", "", "EEvDpPFvT_27AVeryLongNameOfAClassIndeedE"},
    // Expressions.
    {"_Z1fIiEDT", "ng", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "pl", "fp_", "fp_", "ET_"},
    {"_Z1fIiEDT", "qu", "fp_", "fp_fp_", "ET_"},
    {"_Z1fIiEDT", "cl", "fp_", "fp_E", "ET_"},
    {"_Z1fIiEDT", "cvT_", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "cvT__", "fp_", "E", "ET_"},
    {"_Z1fIiEDT", "tli", "fp_", "E", "ET_"},
    {"_Z1fIiEDT", "il", "fp_", "E", "ET_"},
    {"_Z1fIiEDT", "nw_ipi", "fp_", "E", "ET_"},
    {"_Z1fIiEDT", "gsna_iil", "fp_", "E", "ET_"},
    {"_Z1fIiEDT", "nw", "fp_", "_iE", "ET_"},
    {"_Z1fIiEDT", "dl", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "gsda", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "dci", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "sci", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "cci", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "rci", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "plsti", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "plati", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "sz", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "az", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "tw", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "pltr", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "dt", "fp_", "1a", "ET_"},
    {"_Z1fIiEDT", "pt", "fp_", "1aIiE", "ET_"},
    {"_Z1fIiEDT", "dt", "fp_", "sr1b1a", "ET_"},
    {"_Z1fIiEDT", "plsr1b1a", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "ix", "fp_", "fp_", "ET_"},
    {"_Z1fIiEDT", "plLi1E", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "plLi123456789E", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "plL_Z1aE", "fp_", "", "ET_"},
    {"_Z1fIiEDT", "plT_", "fp_", "", "ET_"},
    {"_Z1fIJiiEEDT", "plsZT_", "fp_", "", "EDpT_"},
    {"_Z1fIJiiEEDT", "plsZfp_", "fp_", "", "EDpT_"},
    {"_Z1fIJiiEEDT", "flpl", "fp_", "", "EDpT_"},
    {"_Z1fIJiiEEDT", "frpl", "fp_", "", "EDpT_"},
    {"_Z1fIJiiEEDT", "fLpl", "fp_", "fp_", "EDpT_"},
    {"_Z1fIJiiEEDT", "fRpl", "fp_", "Li1E", "EDpT_"},
    // Names.
    {"_ZN", "1a", "1f", "", "Ev"},
    {"_ZN", "12_GLOBAL__N_1", "1f", "", "Ev"},
    {"_ZN", "1aB3tag", "1f", "", "Ev"},
    {"_ZN1a", "UlvE_", "1f", "", "Ev"},
    {"_ZN1a", "Ut_", "1f", "", "Ev"},
    {"_ZN1a", "1aIiE", "1f", "", "Ev"},
    {"_ZN1a", "pl", "1f", "", "Ev"},
    {"_ZN1a", "nw", "1f", "", "Ev"},
    {"_ZN1a", "cvi", "1f", "", "Ev"},
    {"_ZN1a", "li3_km", "1f", "", "Ev"},
    // A conversion's arguments are not its type's: else the parts have other numbers.
    {"_ZZN1ScvPT_I1AEEvEN1Q1fES4_S_PS3_"
     "83AClassWhoseNameIsSoLongThatNothingElseInTheSymbolIsAsLongAsItIsWhateverItMayBeNamed",
     "S6_", "", "", ""},
    {"_ZNK1aUl", "T_", "", "", "E_clIiEEDav"},
    {"_ZNK1aUl", "i", "", "", "E_clEv"},
    {"_ZN30a_class_with_a_name_of_length_", "C1", "1f", "", "Ev"},
    {"_Z", "Z", "1fv", "E1fv", ""},
    {"_Z", "Z", "1fiii", "E1f_0v", ""},
    {"_Z", "Z", "1fv", "Ed_1fv", ""},
    {"_Z", "Th8_", "1fv", "", ""},
    {"_Z", "Tv8_n16_", "1fv", "", ""},
    {"_ZDC", "1a", "", "", "E"},
    {"_Z1f", "v.", "", "", ""},
};

// What no single symbol shows: a part that counts for too little is hidden by those that count for
// more than they are, unless there are many of it.
TEST(SymbolScanTest, EveryPartCountsEachTime)
{
    for (const Repeated& row : repeated) {
        for (const int times : {1, 2, 60}) {
            const std::string symbol = row.symbol(times);
            const SymbolScan scan = scanSymbol(symbol);
            EXPECT_TRUE(scan._isKnown) << symbol;
            EXPECT_GE(scan._length, lengthOfText(symbol)) << symbol;
            EXPECT_LE(scan._length, 80 * symbol.size()) << symbol;
        }
    }
}

// What is printed as it stands counts character by character.
TEST(SymbolScanTest, LongerWordsAndNumbersCountByTheirLength)
{
    const auto more = [](const std::string& longer, const std::string& one) {
        return scanSymbol(longer)._length - scanSymbol(one)._length;
    };
    EXPECT_EQ(more("_Z40" + std::string(40, 'f') + "v", "_Z30" + std::string(30, 'f') + "v"), 10u);
    EXPECT_EQ(more("_Z1fRA1000_i", "_Z1fRA1_i"), 3u);
    EXPECT_EQ(more("_Z3fffRA1_i", "_Z1fRA1_i"), 0u); // wherever the number stands
    EXPECT_EQ(more("_Z1fILi1000EEvv", "_Z1fILi1EEvv"), 3u);
    EXPECT_EQ(more("_Z1fv.constprop.0", "_Z1fv"), std::strlen(".constprop.0"));
    // "(...)..." at most, and ", " before the next of a list.
    EXPECT_LE(more("_Z1fDpDpi", "_Z1fDpi"), 8u);
    const size_t string =
        std::strlen("std::basic_string<char, std::char_traits<char>, std::allocator<char> >");
    EXPECT_GE(more("_Z1fiSs", "_Z1fi"), string + 2);
    EXPECT_LE(more("_Z1fiSs", "_Z1fi"), string + 4);
}

TEST(SymbolScanTest, FindsTheEndOfTheName)
{
    EXPECT_EQ(scanSymbol("_ZN1SIiE3getIcEEiT_")._nameEnd, std::strlen("_ZN1SIiE3getIcEE"));
    EXPECT_EQ(scanSymbol("_Z3addii")._nameEnd, std::strlen("_Z3add"));
    EXPECT_EQ(scanSymbol("_Zli3_kme")._nameEnd, std::strlen("_Zli3_km"));
    EXPECT_EQ(scanSymbol("_ZZ1fIiEvT_ENKUlvE_clEv")._nameEnd,
              std::strlen("_ZZ1fIiEvT_ENKUlvE_clE"));
}

TEST(SymbolScanTest, OnlyTemplatesHaveAResult)
{
    EXPECT_TRUE(scanSymbol("_Z1fIiEvT_")._hasResult);
    EXPECT_TRUE(scanSymbol("_ZN1S1fIiEEvT_")._hasResult);
    EXPECT_FALSE(scanSymbol("_Z1fi")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1SIiE1fEi")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1SC1IiEET_")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZN1ScvT_IiEEv")._hasResult);
    EXPECT_FALSE(scanSymbol("_ZThn8_N1S1fIiEEvT_")._hasResult); // "non-virtual thunk to ..."
    EXPECT_FALSE(scanSymbol("_ZTv0_n8_N1S1fIiEEvT_")._hasResult);
}

TEST(SymbolScanTest, WorkIsLinearHoweverLongTheText)
{
    std::string symbol = "_Z1fSt4pairIiiE";
    const char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int i = 0; i < 30; ++i) {
        const std::string last = i == 0 ? "S0_" : std::string("S") + digits[i] + "_";
        symbol.append("S_I").append(last).append(last).append("E");
    }
    const SymbolScan scan = scanSymbol(symbol);
    EXPECT_TRUE(scan._isKnown);
    EXPECT_GT(scan._length, uint64_t(1) << 30);
    EXPECT_LT(scan._steps, 10 * symbol.size());
}

TEST(SymbolScanTest, AddressBehindALongTextDoesNotHideIt)
{
    std::string symbol = "_Z1fIiEDTplcvPFvSt4pairIiiE";
    const char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (int i = 0; i < 30; ++i) {
        const std::string last = std::string("S") + digits[i + 1] + "_";
        symbol.append("S0_I").append(last).append(last).append("E");
    }
    symbol += "ELi1EL_Z1aEET_";
    const SymbolScan scan = scanSymbol(symbol);
    EXPECT_TRUE(scan._isKnown);
    EXPECT_GT(scan._length, uint64_t(1) << 30);
}

// Each argument is twice the one before: parameters that stand in the arguments themselves.
TEST(SymbolScanTest, ParametersInArgumentsDoubleToo)
{
    std::string symbol = "_Z1fISt4pairIiiE";
    for (int i = 0; i < 20; ++i) {
        const std::string last = i == 0 ? "T_" : "T" + std::to_string(i - 1) + "_";
        symbol.append("St4pairI").append(last).append(last).append("E");
        if (i > 9) {
            break;
        }
    }
    symbol += "EvT_";
    EXPECT_GT(scanSymbol(symbol)._length, lengthOfText(symbol));
}

TEST(SymbolScanTest, EveryCutSymbolIsRead)
{
    std::ifstream in(ZEM_TEST_DATA "/names/symbols.txt");
    for (std::string line; std::getline(in, line);) {
        const std::string symbol = line.substr(0, line.find('\t'));
        for (size_t length = 0; length < symbol.size(); length += 3) {
            EXPECT_LT(scanSymbol(symbol.substr(0, length))._steps, 100 * symbol.size() + 400);
        }
    }
}

TEST(SymbolScanTest, UnknownSymbolsAreTakenForTheirGreatestLength)
{
    EXPECT_FALSE(scanSymbol("main")._isKnown);
    EXPECT_FALSE(scanSymbol("_Z")._isKnown);
    const SymbolScan scan = scanSymbol("_Z1f%S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_S_");
    EXPECT_FALSE(scan._isKnown);
    EXPECT_GT(scan._length, 1000000u);
}

TEST(SymbolScanTest, SymbolsThatBreakOffOrHaveNoSuchPartAreUnknown)
{
    for (const char* symbol :
         {"_Z0v",         "_Z2f",          "_Z1fS_",        "_Z1fiS1_",      "_Z1fT",
          "_Z1fT0",       "_Z1fSq",        "_Z1fIiv",       "_Z1fIiXE",      "_Z1fIXplLi1EEEvv",
          "_Z1fILi1",     "_Z1fILi1Evv",   "_Z1fIL_1aEEvv", "_Z1fA3i",       "_Z1fM1A",
          "_Z1fFvi",      "_Z1fDv4i",      "_Z1fDtfp_",     "_Z1fDq",        "_Z1fI1XIXsrEEEvv",
          "_ZN1A",        "_ZN1AC9Ev",     "_ZN1AzzEv",     "_ZZ1fvE",       "_ZZ1fvE1a__1",
          "_ZZ1fvEd1a",   "_ZN1AUlvEv",    "_ZN1AUqE_Ev",   "_ZTh4N1A1fEv",  "_ZTv0_N1A1fEv",
          "_ZTq1A",       "_ZGX1a",        "_Z1fDTfL",      "_Z1fIXfpxEEvv", "_Z1fIXfLpEEvv",
          "_Z1fIXxxEEvv", "_Z1fIXnwiEEvv", "_Z1fIXnw_iEEvv", "_Z1fui", "_Z1fUPi"}) {
        EXPECT_FALSE(scanSymbol(symbol)._isKnown) << symbol;
    }
}

TEST(SymbolScanTest, NestingIsFollowedToABound)
{
    const auto pointers = [](size_t count) {
        return "_Z1f" + std::string(count, 'P') + "i";
    };
    EXPECT_TRUE(scanSymbol(pointers(510))._isKnown);
    EXPECT_FALSE(scanSymbol(pointers(511))._isKnown);
    const auto locals = [](size_t count) {
        std::string symbol = "_Z" + std::string(count, 'Z') + "1fv";
        for (size_t i = 0; i < count; ++i) {
            symbol += "E1fv";
        }
        return symbol;
    };
    EXPECT_TRUE(scanSymbol(locals(255))._isKnown);
    EXPECT_FALSE(scanSymbol(locals(256))._isKnown);
    const auto signs = [](size_t count) {
        std::string symbol = "_Z1fIiEDT";
        for (size_t i = 0; i < count; ++i) {
            symbol += "ng";
        }
        return symbol + "fp_ET_";
    };
    EXPECT_TRUE(scanSymbol(signs(509))._isKnown);
    EXPECT_FALSE(scanSymbol(signs(510))._isKnown);
}

TEST(SymbolScanTest, NestingWithoutEndIsNotFollowed)
{
    EXPECT_FALSE(scanSymbol("_Z1f" + std::string(100000, 'P') + "i")._isKnown);
    EXPECT_FALSE(scanSymbol("_Z" + std::string(100000, 'Z'))._isKnown);
}

} // namespace
