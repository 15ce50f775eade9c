NEREO control file rev 07 NEREO Ver @VERSION@
NEREO 2024 (@BRANCH@)
 *** Title
Lid-driven cavity, Re 100
 *** Equation Selection
1
1
0
0
0
 *** Units
0
 *** Property Settings
1 1 0 0 Air
101325 293.15 0 0
1 1 1 0 1 2
0 0 0
0 0 0
0
0 0 0
0 0 0
0 0 0
0 0 0
0 0 0
0 0 0
kRho 0 2 287.05
kVisc 0 15 3 4 5 kT
   1.716e-05 273.15
   1.813e-05 293.15
   2.181e-05 373.15
   2.934e-05 573.15
kKXX 0 1 0.02587
kCp 0 1 1006.1
kSurfT 0 1 0
kEmis 0 1 0
kTransmis 0 1 0
kElRes 0 1 0
kWallRough 0 1 0
kSpecDifu 0 1 0
-----end of this index property data
 *** Field Variable Initialization
kT 293 0
 *** Transient Data 
0 0
0.001
-1
 *** Free Surface
0
0 0 0
0 0
0 0
0 0
 *** Sequential Solver Iterations
50
10
0
kP 1e-05
 *** Solution Control
kU 15 5 1 1e-05
kV 15 5 1 1e-05
kW 15 5 1 1e-05
kP 14 1000 1 1e-09
kT 14 1000 1 1e-08
kKin 15 5 1 1e-05
kDiss 15 5 1 1e-05
kScal1 6 1900 1 1e-07
kTotalT 15 5 1 1e-05
kEnth 15 5 1 1e-05
kVOF 6 1900 1 1e-10
kElecPot 6 1900 1 1e-10
kVelPot 15 5 1 1e-05
kTurbMu 15 5 1 1e-05
kLiqFrac 15 5 1 1e-05
 *** Relaxation
kU 0.5 0
kV 0.5 0
kW 0.5 0
kP 0.3 0
kT 1 0
kKin 0.5 0
kDiss 0.5 0
kScal1 1 0
kTotalT 1 0
kEnth 1 0
kVOF 1 0
kElecPot 1 0
kVelPot 0 0
kTurbMu 0.5 0
kLiqFrac 0 0
kTotalP 0 0
kSteam 0 0
kHumid 0 0
kRotVel 0 0
kVeff 0.1 0
kCeff 0.5 0
kECurX 0 0
kECurY 0 0
kECurZ 0 0
kRho 0.5 0
kVisc 0.5 0
kKXX 0.5 0
kCp 1 0
kSurfT 1 0
kEmis 1 0
kTransmis 1 0
kDRhoDP 1 0
kVolum 0 0
kElRes 0 0
kWallRough 0 0
kSThick 0 0
kSpecDifu 0 0
kContRes 0 0
kThetaJB 0 0
kThetaJC 0 0
kRhoLiq 0 0
kRhoMix 0 0
kRhoVap 0 0
kSeeBeck 0 0
kSHGC 0 0
kUfactor 0 0
 *** Auto Convergence Control
1 1
Instantaneous Convergence Curve Slope 0.001
Time-Average Convergence Curve Slope 0.03162
Time-Average Convergence Curve Concavity 0.03162
Field Fluctuation 0.0001
 *** Output Setting
0 0 0 23 832
 *** Results Output Frequency
steps 1 0
 *** Summary Output Frequency
steps 1 0
 *** Field Variable Output
kU 0
kV 0
kW 0
kP 0
kT 0
kKin 0
kDiss 0
kScal1 0
kTotalT 0
kEnth 0
kVOF 0
kElecPot 0
kVelPot 0
kTurbMu 0
kLiqFrac 0
 *** Restart
0 0 0 0
 *** Batch
0
 *** Solar Heating
0 0
0 0 0
0 0 0
0
2015 5 18 14 22 47
1 0 0
0 1 0
0 0
United*States Charlottesville*Va.
0 0
0
293.15
 *** Constants
kPRef 101325
kInflate 1 0 1 3 0 1 3 0.45 1 0.01 0 1.05
kAutoYP 0 1 36 1 300 1
kSmokeOn 0 21000 3 0.05
kThComfOn 0 60 76 0.61
 *** Interface
TARNDESK TARNVIEW
 *** Flag section
1
restart_every 100
 *** Monitor Points
0
