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
<context>
    <name>Nereo::Inspection</name>
    <message>
        <source>a file that can be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file can&apos;t be opened: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file can&apos;t be read to its end: %1; a load doesn&apos;t notice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file can&apos;t be read to its end: %1; a load fails</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a configuration, a control file, a material database, a geometry and boundary file, or results</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the content is of no known kind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>characters in the encoding of the text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bytes %1 are no characters in the encoding of the text; they are read as replacement characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bytes %1 at the end of the file are no whole character; they are ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a line feed behind it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a carriage return that no line feed follows; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a character of a text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a NUL in the text; it is read as a character</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a byte-order mark at the start of a value; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number; it is read as %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number; it is read as %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a whole number from -2147483648 to 2147483647</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold; it is read as %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number up to 1.79769e+308</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is larger than any number; it is read as infinite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number from 2.22507e-308 to 1.79769e+308</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is outside the range of numbers; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value is missing; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the suffix &quot;xml&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the content is XML; without the suffix &quot;xml&quot; a load takes it for text and throws</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another suffix than &quot;xml&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the content is no XML; with the suffix &quot;xml&quot; a load takes it for that and fails</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a setting&apos;s key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no setting; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no setting; a load throws</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each setting once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is set again; the earlier value is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>blanks or empty lines behind the last line; a load throws</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>well-formed XML</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2; a load fails</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an element &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no element &quot;%2&quot; in the document; all of it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>text only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an element &quot;%1&quot; stands inside of a value; a load fails</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>four whole numbers joined by dots</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t four whole numbers joined by dots; it is read as %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t four whole numbers joined by dots; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the end of the line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the items of the line; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the next section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the lines of the section; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load doesn&apos;t take the content of the section &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what a writer puts there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t what a writer puts into the first lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the title of a section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no title of a section; what stands up to the next one is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the title of a known section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no section; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each section once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the section &quot;%1&quot; stands in the file again; what it says again overrides the earlier one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each section that a writer writes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the section &quot;%2&quot; is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a variable of the section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable of the section; the line is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable; the name is kept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable; it is read as kNone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a variable or a flag of nodes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a variable nor a flag</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each variable once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in the section again; the earlier one is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0 or 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is neither 0 nor 1; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the number of the flags</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 flags are announced and %1 are there; a load stops the process</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each flag once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is another flag &quot;%1&quot; before; a look-up by name gives that one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a material as a writer writes it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t what a writer puts there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an element that belongs there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an element &quot;%1&quot; doesn&apos;t belong there; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the element once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands there again; the earlier one is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a type of material</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a type of variation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a type of property</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of property; a load fails</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a property that the type of material has</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a material of this type has no property &quot;%1&quot;; a save loses its type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each property once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has one place in memory with an earlier property; it overrides that one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t used here; a save loses it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>x and y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the point has no %2; it is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an x above that of the point before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>x is %1 and doesn&apos;t rise from the point before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a name of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is another material &quot;%1&quot; before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a number of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is another material with the id %1 before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t one of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>-1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UTF-8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bytes %1 are no UTF-8; they are read as replacement characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the marker is %1 instead of -1; nothing behind it is read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the byte order of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the counts make sense only in the other byte order than the first word says</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>all that the counts announce</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file ends early: %1 of %2 records are whole; what is missing is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0 or more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the count is %1; a load stops the process</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the count is %1; no record is read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a field variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no field variable; its values are ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>each field once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a field that stands there before; a load stops the process</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a node from 1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>node %1 is outside 1 to %2 (%3 such records); a load stops the process</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>node %1 is outside 1 to %2 (%3 such records)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a record of each node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 nodes have no record, the first is %1; their values are 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one record of each node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 records are of a node that has one before, the first of node %1; the earlier values are ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>finite numbers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 values of the field are no finite numbers, the first at node %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 bytes stand behind the last record; they are ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>did you mean &quot;%1&quot;?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the bytes %1 are no characters in the encoding of the text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a carriage return that no line feed follows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is outside the range of numbers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a name in double quotes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where a name in double quotes is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where a writer puts %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file ends where a writer puts %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the items of the line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the lines of the section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where the coordinate system %2 should stand again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the list before has no -1 at its end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where the list should end with -1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value is missing; %2 is read for it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value is missing; it is read as empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the lines of the section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file ends behind the title of the section; nothing is read for it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file ends before the title of the first section</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>so are those behind it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load takes the next line for it, and so on for those below</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what is left of it is read for the values behind it:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load takes the next line for it:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the version is read as %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a flag of nodes; it is read as %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of material; a save loses the reference values and the types of the properties</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of variation; a save loses the value and the curve of the property</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a material of this type has no property &quot;%1&quot;; it is read, and saved, as &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the independent variable of the points is missing; it is kNone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>at most %2 values in a field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a field of %1 values is more than the %2 that there can be; a load throws</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%5 is &quot;%1&quot; in %4, but %6 is &quot;%3&quot; in %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the version is %1 in %4, but %3 in %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%5 is %1 in %4, but %6 is %3 in %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the material &quot;%1&quot; stands in %3, but not in %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the material &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the material &quot;%3&quot; stands in %2, but not in %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there are %1 nodes in %4, but %3 in %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name of the job</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the program that writes the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Version&quot; and the version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an empty line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a section&apos;s title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is neither 0 nor 1; it is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file ends early: %1 of %2 records are whole; without a known field no value is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 nodes have no record, the first is %1; without a known field no value is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%2 records are of a node that has one before, the first of node %1; without a known field no value is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no carriage return</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a carriage return in a value; a save loses it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a blank, three asterisks and a blank before the name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no title; it and what follows are taken for a part of the section before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>something is missing that a writer puts there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>characters without the byte 0D</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a byte of the character is 0D, which a load leaves out; from there on it reads other characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load leaves out bytes 0D of characters, the first in line %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load stops the process</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a load throws</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>those behind it are read as</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what a load doesn&apos;t find is read as 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a NUL in the text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a line is missing before it, and the first title with what stands up to the next one is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a NUL in the name of an attribute, which is ignored</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a writer puts the section &quot;%1&quot; here</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
