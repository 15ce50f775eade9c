#include "support/Assertions.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <thread>
#include <type_traits>
#include <vector>

namespace Nereo::Io {
namespace {

using Names = std::map<int, std::string>;

// Every field variable, as "code name". The scratch names have no number 30, so that those from kScr31 on
// have a code that is one less than their distance from kScr1 suggests.
const char fieldVariables[] =
    "1 kU 2 kV 3 kW 4 kP 5 kT 6 kKin 7 kDiss 8 kScal1 9 kTotalT 10 kEnth 11 kVOF 12 kElecPot "
    "13 kVelPot 14 kTurbMu 15 kLiqFrac 16 kTotalP 17 kSteam 18 kHumid 19 kRotVel 20 kVeff "
    "21 kCeff 22 kECurX 23 kECurY 24 kECurZ 25 kRho 26 kVisc 27 kCond 28 kCp 29 kSurfT 30 kEmis "
    "31 kTransmis 32 kDRhoDP 33 kVolum 34 kElRes 35 kWallRough 36 kSThick 37 kSpecDifu "
    "38 kContRes 39 kThetaJB 40 kThetaJC 41 kRhoLiq 42 kRhoMix 43 kRhoVap 44 kSeeBeck 45 kSHGC "
    "46 kUfactor 47 kGen 48 kMixF 49 kMassBC 50 kVolBC 51 kWallDist 52 kTripDist 53 kTripNode "
    "54 kKSubU 55 kKSubV 56 kKSubW 57 kUHat 58 kVHat 59 kWHat 60 kUDiag 61 kVDiag 62 kWDiag "
    "63 kPSrc 64 kRHS 65 kDiag 66 kRDiag 67 kAdvChk 68 kOneMore 69 kExtSav 70 kNodAspRat "
    "71 kTESrc 72 kTNSrc 73 kUESrc 74 kUNSrc 75 kVESrc 76 kVNSrc 77 kWESrc 78 kWNSrc 79 kSESrc "
    "80 kSNSrc 81 kScr1 82 kScr2 83 kScr3 84 kScr4 85 kScr5 86 kScr6 87 kScr7 88 kScr8 89 kScr9 "
    "90 kScr10 91 kScr11 92 kScr12 93 kScr13 94 kScr14 95 kScr15 96 kScr16 97 kScr17 98 kScr18 "
    "99 kScr19 100 kScr20 101 kScr21 102 kScr22 103 kScr23 104 kScr24 105 kScr25 106 kScr26 "
    "107 kScr27 108 kScr28 109 kScr29 110 kScr31 111 kScr32 112 kScr33 113 kScr34 114 kScr35 "
    "115 kScr36 116 kScr37 117 kScr38 118 kScr39 119 kDesDelta 120 kUResid 121 kVResid "
    "122 kWResid 123 kPResid 124 kTResid 125 kSResid 126 kVOFResid 127 kPDX 128 kPDY 129 kPDZ "
    "130 kD2PXX 131 kD2PXY 132 kD2PXZ 133 kD2PYY 134 kD2PYZ 135 kD2PZZ 136 kTDX 137 kTDY "
    "138 kTDZ 139 kD2TXX 140 kD2TXY 141 kD2TXZ 142 kD2TYY 143 kD2TYZ 144 kD2TZZ 145 kUDX "
    "146 kUDY 147 kUDZ 148 kD2UXX 149 kD2UXY 150 kD2UXZ 151 kD2UYY 152 kD2UYZ 153 kD2UZZ "
    "154 kVDX 155 kVDY 156 kVDZ 157 kD2VXX 158 kD2VXY 159 kD2VXZ 160 kD2VYY 161 kD2VYZ "
    "162 kD2VZZ 163 kWDX 164 kWDY 165 kWDZ 166 kD2WXX 167 kD2WXY 168 kD2WXZ 169 kD2WYY "
    "170 kD2WYZ 171 kD2WZZ 172 kPDR 173 kPDS 174 kPDT 175 kD2PRR 176 kD2PRS 177 kD2PRT "
    "178 kD2PSS 179 kD2PST 180 kD2PTT 181 kTDR 182 kTDS 183 kTDT 184 kD2TRR 185 kD2TRS "
    "186 kD2TRT 187 kD2TSS 188 kD2TST 189 kD2TTT 190 kUDR 191 kUDS 192 kUDT 193 kD2URR "
    "194 kD2URS 195 kD2URT 196 kD2USS 197 kD2UST 198 kD2UTT 199 kVDR 200 kVDS 201 kVDT "
    "202 kD2VRR 203 kD2VRS 204 kD2VRT 205 kD2VSS 206 kD2VST 207 kD2VTT 208 kWDR 209 kWDS "
    "210 kWDT 211 kD2WRR 212 kD2WRS 213 kD2WRT 214 kD2WSS 215 kD2WST 216 kD2WTT 217 kUTrunc "
    "218 kVTrunc 219 kWTrunc 220 kPTrunc 221 kTTrunc 222 kNull 223 kTurbRatio 224 kTurbI "
    "225 kTurbLenS 226 kCSmag 227 kCMu 228 kCE1 229 kCE2 230 kKappa 231 kVanDriest 232 kBWall "
    "233 kSRepeat 234 kRough 235 kRNGBeta 236 kRNGEta0 237 kRNGCE0 238 kSSTFFKF 239 kSSTFFWF "
    "240 kSSTAutoWall 241 kKEScalWF 242 kTurbMomDC1 243 kGravX 244 kGravY 245 kGravZ 246 kRhoRef "
    "247 kPRef 248 kTRef 249 kTStag 250 kCpCv 251 kRGas 252 kTOff 253 kArtVis 254 kSpecWall "
    "255 kFastLDU 256 kSPJComp 257 kQuadLevel 258 kFormat 259 kFormulation 260 kTrans "
    "261 kTransP 262 kConvection 263 kAutoTurb 264 kRotX 265 kRotY 266 kRotZ 267 kExtScl "
    "268 kWalForc 269 kWalHeat 270 kCorFilm 271 kReLen 272 kNuA 273 kNuB 274 kNuC 275 kNuLen "
    "276 kDivChk 277 kAutoCmpr 278 kCpMech 279 kNrgConv 280 kExtIntFlow 281 kNormOne 282 kGmiOut "
    "283 kVOFOn 284 kPSurf 285 kExTrans 286 kCDecay 287 kTankChk 288 kRadOn 289 kTBack "
    "290 kInflate 291 kAutoYP 292 kElecOn 293 kExtConv 294 kExtIntRatio 295 kSACb1 296 kSASig "
    "297 kSACb2 298 kSAKap 299 kSACw1 300 kSACw2 301 kSACw3 302 kSACv1 303 kSACt1 304 kSACt2 "
    "305 kSACt3 306 kSACt4 307 kSUPG 308 kAdvFlux 309 kTranOrder 310 kExtraOut 311 kBigKRat "
    "312 kDRTabQ 313 kPerPenParm 314 kFShell 315 kForcedScript 316 kBubRadDef 317 kDMFracDef "
    "318 kFacCond 319 kFacEvap 320 kRhoDisp 321 kConceptFlow 322 kConceptHeat 323 kCavitationOn "
    "324 kNatConc1 325 kNatConc2 326 kSmokeOn 327 kThComfOn 328 kHydrostatPresFlow 329 kIn "
    "330 kOut 331 kUnknown 332 kPTotOut 333 kWall 334 kSym 335 kSlip 336 kPer 337 kHeatFlux "
    "338 kFilmCoef 339 kRadHCoef 340 kVHS 341 kNHS 342 kTotalHeatGen 343 kTotalHeatFlux "
    "344 kTransparent 345 kECurMag 346 kFanInBC 347 kScalFlux 348 kMovWall 349 kRotor "
    "350 kFilmAmb 351 kRadTSrc 352 kFreeSurf 353 kVolumeFlow 354 kVeloc 355 kInFan 356 kOutFan "
    "357 kShellFace 358 kExtrude 359 kInHeatEx 360 kOutHeatEx 361 kNone ";

Names expectedNames()
{
    Names names;
    std::istringstream rows(fieldVariables);
    int code;
    for (std::string name; rows >> code >> name;)
        names[code] = name;
    return names;
}

const struct {
    int code;
    const char* flag;
    const char* withoutPreference; // what the code is named where flags aren't preferred
} nodeFlags[] = {
    {20, "kSlipNode",    "kVeff"    },
    {21, "kLockP",       "kCeff"    },
    {25, "kWallMarker",  "kRho"     },
    {26, "kConvNode",    "kVisc"    },
    {30, "kPerNode",     "kEmis"    },
    {29, "kUnknownNode", "kSurfT"   },
    {28, "kFanCurve",    "kCp"      },
    {34, "kExtraFlux",   "kElRes"   },
    {27, "kVolumeRate",  "kKXX"     }, // never named kVolumeRate, see below
    {31, "kMassRate",    "kTransmis"},
    {33, "kVNormal",     "kVolum"   },
    {57, "kAFac",        "kUHat"    },
    {58, "kBFac",        "kVHat"    },
    {59, "kCFac",        "kWHat"    },
};

const struct {
    int code;
    const char* alias;
    const char* fieldVariable; // a name that is looked up and never given
} aliases[] = {
    {27, "kKXX", "kCond"},
    {47, "kKYY", "kGen" },
    {48, "kKZZ", "kMixF"},
};

int codeFor(const QString& name)
{
    return CodeNameTable::instance().codeForName(name);
}

std::string nameFor(int code, bool preferFlagName)
{
    return CodeNameTable::instance().nameForCode(code, preferFlagName).toStdString();
}

TEST(FieldVariable, NumbersItsNamesWithoutAGap)
{
    const Names enumerators {
#define FIELD_VARIABLE(name, code) {name, #name},
#include <NereoFileIO/FieldVariable.def>
    };
    EXPECT_EQ(enumerators, expectedNames());
    EXPECT_EQ(enumerators.size(), 361u);
    EXPECT_EQ(enumerators.begin()->first, 1);
    EXPECT_EQ(enumerators.rbegin()->first, 361);
}

TEST(FieldVariable, GivesTheCodesAtCompileTime)
{
    static_assert(kU == 1 && kP == 4 && kCond == 27 && kNull == 222 && kNone == 361);
    static_assert(kScr29 == 109 && kScr31 == 110 && kScr39 == 118);
    static_assert(kHydrostatPresFlow == 328 && kIn == 329 && kOutHeatEx == 360);
    static_assert(std::is_same_v<std::underlying_type_t<FieldVariable>, int>);
}

TEST(NodeFlag, NumbersItsNamesInTheOrderOfTheTable)
{
    const std::vector<std::pair<int, std::string>> enumerators {
#define NODE_FLAG(name, code) {name, #name},
#include <NereoFileIO/NodeFlag.def>
    };
    std::vector<std::pair<int, std::string>> expected;
    for (const auto& row : nodeFlags)
        expected.emplace_back(row.code, row.flag);
    EXPECT_EQ(enumerators, expected);
    EXPECT_EQ(enumerators.size(), 14u);
    static_assert(kSlipNode == 20 && kVolumeRate == 27 && kCFac == 59);
    static_assert(std::is_same_v<std::underlying_type_t<NodeFlag>, int>);
}

TEST(CodeNameTable, IsOneObject)
{
    EXPECT_EQ(&CodeNameTable::instance(), &CodeNameTable::instance());
    static_assert(!std::is_copy_constructible_v<CodeNameTable> && !std::is_copy_assignable_v<CodeNameTable>);
    static_assert(!std::is_default_constructible_v<CodeNameTable> && !std::is_destructible_v<CodeNameTable>);
}

TEST(CodeNameTable, FindsTheCodeOfEveryName)
{
    for (const auto& [code, name] : expectedNames())
        EXPECT_EQ(codeFor(QString::fromStdString(name)), code) << name;
    for (const auto& row : nodeFlags)
        EXPECT_EQ(codeFor(row.flag), row.code) << row.flag;
    for (const auto& row : aliases)
        EXPECT_EQ(codeFor(row.alias), row.code) << row.alias;
}

TEST(CodeNameTable, AnswersNoneForUnknownNames)
{
    const QString cases[] = {
        QString(),
        "",
        "ku", // case counts
        "KU",
        "kKIN",
        "kslipnode",
        "kKxx",
        " kU", // so does white space
        "kU ",
        "\tkU",
        "kU\n",
        " kKXX",
        "kKXX ",
        "kSlipNode ",
        QString::fromUtf8("kU\0", 3), // nothing is cut off
        QString::fromUtf8("kÜ"),
        "k",
        "U",
        "SlipNode",
        "kScr",
        "kScr0",
        "kScr30",
        "kScr031",
        "kScr40",
        "kKXY",
        "4",
        "kNone", // known, and the same answer
    };
    for (const QString& name : cases)
        EXPECT_EQ(codeFor(name), 361) << name.toStdString();
}

TEST(CodeNameTable, SkipsTheScratchNameThirty)
{
    EXPECT_EQ(codeFor("kScr1"), 81);
    EXPECT_EQ(codeFor("kScr29"), 109);
    EXPECT_EQ(codeFor("kScr30"), 361);
    EXPECT_EQ(codeFor("kScr31"), 110);
    EXPECT_EQ(codeFor("kScr39"), 118);
}

TEST(CodeNameTable, KnowsNullAsAnOrdinaryName)
{
    EXPECT_EQ(codeFor("kNull"), 222);
    EXPECT_EQ(nameFor(222, false), "kNull");
}

TEST(CodeNameTable, NamesEveryCode)
{
    Names names = expectedNames();
    names[0] = "";
    for (const auto& row : aliases)
        names[row.code] = row.alias;
    for (const auto& row : nodeFlags)
        EXPECT_EQ(names[row.code], row.withoutPreference);

    for (int code = 0; code <= 361; ++code)
        EXPECT_EQ(nameFor(code, false), names[code]) << code;
}

TEST(CodeNameTable, NamesEveryCodeByItsFlagWherePreferred)
{
    Names names = expectedNames();
    names[0] = "";
    for (const auto& row : nodeFlags)
        names[row.code] = row.flag;
    for (const auto& row : aliases)
        names[row.code] = row.alias;

    for (int code = 0; code <= 361; ++code)
        EXPECT_EQ(nameFor(code, true), names[code]) << code;
}

TEST(CodeNameTable, NamesTheConductivitiesByTheirAliasesAlways)
{
    for (const auto& [code, alias, fieldVariable] : aliases) {
        EXPECT_EQ(codeFor(fieldVariable), code);
        EXPECT_EQ(nameFor(code, false), alias);
        EXPECT_EQ(nameFor(code, true), alias);
    }
    EXPECT_EQ(codeFor("kVolumeRate"), 27);
}

TEST(CodeNameTable, StopsAtACodeThatIsNone)
{
    const CodeNameTable& table = CodeNameTable::instance();
    for (const int code : {-1, 362, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_INDEX_ASSERTION(table.nameForCode(code, false), "QVector<T>::at", "FileIO/CodeNameTable")
            << code;
        EXPECT_INDEX_ASSERTION(table.nameForCode(code, true), "QVector<T>::at", "FileIO/CodeNameTable")
            << code;
    }
}

TEST(CodeNameTable, SharesTheTextsThatItGives)
{
    const CodeNameTable& table = CodeNameTable::instance();
    for (const int code : {4, 20, 27}) {
        const QString first = table.nameForCode(code, true);
        EXPECT_EQ(first.constData(), table.nameForCode(code, true).constData()) << code;
    }
}

TEST(CodeNameTable, IsCreatedOnceByThreadsThatStartTogether)
{
    std::vector<const CodeNameTable*> tables(8);
    std::vector<std::thread> threads;
    for (const CodeNameTable*& table : tables)
        threads.emplace_back([&table] { table = &CodeNameTable::instance(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set(tables.begin(), tables.end()).size(), 1u);
}

TEST(CodeNameTable, ServesWhatRunsWhileTheProcessEnds)
{
    const auto lookUpAtTheEnd = [] {
        // Registered before the first use of the table, it runs after everything created by that use is gone.
        std::atexit([] {
            if (codeFor("kSlipNode") != 20 || nameFor(20, true) != "kSlipNode")
                std::abort();
        });
        std::exit(codeFor("kU") == 1 ? 0 : 1);
    };
    EXPECT_EXIT(lookUpAtTheEnd(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace Nereo::Io
