<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>Clt::MaterialType</name>
    <message>
        <source>Fluid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Solid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Internal Fan/Pump</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check Valve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotating Region</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Centrifugal Pump/Blower</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compact Thermal Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Printed Circuit Boards</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thermoelectric Comp.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contact Resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LED Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unassigned</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Exchanger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Sink</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Clt::PropertyType</name>
    <message>
        <source>Density</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Viscosity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Conductivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Specific heat</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Surface tension</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cp/Cv</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X-Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y-Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Z-Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bulk modulus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emissivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transmissivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wall roughness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotational speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Through-Flow K</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normal direction 1 K</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normal direction 2 K</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Full open K factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cutoff flow rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Driving torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inertia</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Electrical resistivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Seebeck coefficient</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slip factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compressibility</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Driving force</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistive force</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stiction at min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stiction at max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Coeff. of rest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial angular velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistive torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Orbital angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotational angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial orbital velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Driving orbital torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistive orbital torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial rotational velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Driving rotational torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistive rotational torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nutation angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial nutation velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial X velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial Y velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial Z velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial X angular velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial Y angular velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial Z angular velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Theta JB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Theta JC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total PCB thickness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Traces and Planes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dielectric</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TEC geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Control method</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TEC parameter limits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Transfer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Phase</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Base conductivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fin conductivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Base thickness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Solar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Clt::VariationType</name>
    <message>
        <source>Constant</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Equation of State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Power Law</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sutherland</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Polynomial</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Polynomial Coefficient</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inverse Polynomial</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adiabatic Equation of State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Same as X-dir.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thermodynamic Tables</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Piecewise Linear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Moist Gas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arrhenius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free Area Ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Friction Factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Head Capacity Curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Permeability</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NonNewt Pwr Law</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Herschel-Buckley</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Carreau</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1st Order Polymer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2nd Order Polymer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fan Curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity Profile</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Table</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reciprocating</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Oscillating</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Constant Angular Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Constant Linear Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spring</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Torsion Spring</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Table with Angular Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Traces And Planes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dielectric</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Control Code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size/NumCouples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TEC parameter limits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Exchanger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature Change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Input/Extraction Rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Air Conditioner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adiabatic Humidification</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steam Humidification</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enthalpy Heat Exchanger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dehumidification</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vapor Pressure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linked Vapor Material</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Micro Channel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin-Fin in Line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pin-Fin Staggered</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Offset Strip</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heat Sink Profile</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Solar Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Solar Wall</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
