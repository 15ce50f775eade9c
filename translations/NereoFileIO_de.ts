<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Clt::MaterialType</name>
    <message>
        <source>Fluid</source>
        <translation>Fluid</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Festkörper</translation>
    </message>
    <message>
        <source>Resistance</source>
        <translation>Strömungswiderstand</translation>
    </message>
    <message>
        <source>Internal Fan/Pump</source>
        <translation>Interner Lüfter/Interne Pumpe</translation>
    </message>
    <message>
        <source>Check Valve</source>
        <translation>Rückschlagventil</translation>
    </message>
    <message>
        <source>Rotating Region</source>
        <translation>Rotierender Bereich</translation>
    </message>
    <message>
        <source>Centrifugal Pump/Blower</source>
        <translation>Kreiselpumpe/Radialgebläse</translation>
    </message>
    <message>
        <source>Compact Thermal Model</source>
        <translation>Thermisches Kompaktmodell</translation>
    </message>
    <message>
        <source>Printed Circuit Boards</source>
        <translation>Leiterplatten</translation>
    </message>
    <message>
        <source>Thermoelectric Comp.</source>
        <translation>Thermoelektr. Bauteil</translation>
    </message>
    <message>
        <source>Contact Resistance</source>
        <translation>Kontaktwiderstand</translation>
    </message>
    <message>
        <source>LED Device</source>
        <translation>LED-Bauteil</translation>
    </message>
    <message>
        <source>Unassigned</source>
        <translation>Nicht zugewiesen</translation>
    </message>
    <message>
        <source>Heat Exchanger</source>
        <translation>Wärmeübertrager</translation>
    </message>
    <message>
        <source>Heat Sink</source>
        <translation>Kühlkörper</translation>
    </message>
</context>
<context>
    <name>Clt::PropertyType</name>
    <message>
        <source>Density</source>
        <translation>Dichte</translation>
    </message>
    <message>
        <source>Viscosity</source>
        <translation>Viskosität</translation>
    </message>
    <message>
        <source>Conductivity</source>
        <translation>Wärmeleitfähigkeit</translation>
    </message>
    <message>
        <source>Specific heat</source>
        <translation>Spezifische Wärmekapazität</translation>
    </message>
    <message>
        <source>Surface tension</source>
        <translation>Oberflächenspannung</translation>
    </message>
    <message>
        <source>Cp/Cv</source>
        <translation>Cp/Cv</translation>
    </message>
    <message>
        <source>X-Direction</source>
        <translation>X-Richtung</translation>
    </message>
    <message>
        <source>Y-Direction</source>
        <translation>Y-Richtung</translation>
    </message>
    <message>
        <source>Z-Direction</source>
        <translation>Z-Richtung</translation>
    </message>
    <message>
        <source>Bulk modulus</source>
        <translation>Kompressionsmodul</translation>
    </message>
    <message>
        <source>Emissivity</source>
        <translation>Emissionsgrad</translation>
    </message>
    <message>
        <source>Transmissivity</source>
        <translation>Transmissionsgrad</translation>
    </message>
    <message>
        <source>Wall roughness</source>
        <translation>Wandrauheit</translation>
    </message>
    <message>
        <source>Flow</source>
        <translation>Durchfluss</translation>
    </message>
    <message>
        <source>Rotational speed</source>
        <translation>Drehzahl</translation>
    </message>
    <message>
        <source>Through-Flow K</source>
        <translation>K-Wert in Durchströmungsrichtung</translation>
    </message>
    <message>
        <source>Normal direction 1 K</source>
        <translation>K-Wert in Normalenrichtung 1</translation>
    </message>
    <message>
        <source>Normal direction 2 K</source>
        <translation>K-Wert in Normalenrichtung 2</translation>
    </message>
    <message>
        <source>Full open K factor</source>
        <translation>K-Wert bei voller Öffnung</translation>
    </message>
    <message>
        <source>Cutoff flow rate</source>
        <translation>Abschaltdurchfluss</translation>
    </message>
    <message>
        <source>Driving torque</source>
        <translation>Antriebsmoment</translation>
    </message>
    <message>
        <source>Inertia</source>
        <translation>Trägheitsmoment</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Electrical resistivity</source>
        <translation>Spezifischer elektrischer Widerstand</translation>
    </message>
    <message>
        <source>Seebeck coefficient</source>
        <translation>Seebeck-Koeffizient</translation>
    </message>
    <message>
        <source>Resistivity</source>
        <translation>Spezifischer Wärmewiderstand</translation>
    </message>
    <message>
        <source>Slip factor</source>
        <translation>Schlupffaktor</translation>
    </message>
    <message>
        <source>Compressibility</source>
        <translation>Kompressibilität</translation>
    </message>
    <message>
        <source>Initial velocity</source>
        <translation>Anfangsgeschwindigkeit</translation>
    </message>
    <message>
        <source>Driving force</source>
        <translation>Antriebskraft</translation>
    </message>
    <message>
        <source>Resistive force</source>
        <translation>Widerstandskraft</translation>
    </message>
    <message>
        <source>Stiction at min</source>
        <translation>Haftreibung am Minimum</translation>
    </message>
    <message>
        <source>Stiction at max</source>
        <translation>Haftreibung am Maximum</translation>
    </message>
    <message>
        <source>Coeff. of rest</source>
        <translation>Stoßzahl</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>Initial angular velocity</source>
        <translation>Anfängliche Winkelgeschwindigkeit</translation>
    </message>
    <message>
        <source>Resistive torque</source>
        <translation>Lastmoment</translation>
    </message>
    <message>
        <source>Orbital angle</source>
        <translation>Umlaufwinkel</translation>
    </message>
    <message>
        <source>Rotational angle</source>
        <translation>Drehwinkel</translation>
    </message>
    <message>
        <source>Initial orbital velocity</source>
        <translation>Anfängliche Umlaufgeschwindigkeit</translation>
    </message>
    <message>
        <source>Driving orbital torque</source>
        <translation>Antriebsmoment des Umlaufs</translation>
    </message>
    <message>
        <source>Resistive orbital torque</source>
        <translation>Lastmoment des Umlaufs</translation>
    </message>
    <message>
        <source>Initial rotational velocity</source>
        <translation>Anfängliche Drehgeschwindigkeit</translation>
    </message>
    <message>
        <source>Driving rotational torque</source>
        <translation>Antriebsmoment der Drehung</translation>
    </message>
    <message>
        <source>Resistive rotational torque</source>
        <translation>Lastmoment der Drehung</translation>
    </message>
    <message>
        <source>Nutation angle</source>
        <translation>Nutationswinkel</translation>
    </message>
    <message>
        <source>Initial nutation velocity</source>
        <translation>Anfängliche Nutationsgeschwindigkeit</translation>
    </message>
    <message>
        <source>Initial X velocity</source>
        <translation>Anfangsgeschwindigkeit in X</translation>
    </message>
    <message>
        <source>Initial Y velocity</source>
        <translation>Anfangsgeschwindigkeit in Y</translation>
    </message>
    <message>
        <source>Initial Z velocity</source>
        <translation>Anfangsgeschwindigkeit in Z</translation>
    </message>
    <message>
        <source>Initial X angular velocity</source>
        <translation>Anfängliche Winkelgeschwindigkeit um X</translation>
    </message>
    <message>
        <source>Initial Y angular velocity</source>
        <translation>Anfängliche Winkelgeschwindigkeit um Y</translation>
    </message>
    <message>
        <source>Initial Z angular velocity</source>
        <translation>Anfängliche Winkelgeschwindigkeit um Z</translation>
    </message>
    <message>
        <source>Theta JB</source>
        <translation>Theta JB</translation>
    </message>
    <message>
        <source>Theta JC</source>
        <translation>Theta JC</translation>
    </message>
    <message>
        <source>Total PCB thickness</source>
        <translation>Gesamtdicke der Leiterplatte</translation>
    </message>
    <message>
        <source>Traces and Planes</source>
        <translation>Leiterbahnen und Kupferflächen</translation>
    </message>
    <message>
        <source>Dielectric</source>
        <translation>Dielektrikum</translation>
    </message>
    <message>
        <source>TEC geometry</source>
        <translation>TEC-Geometrie</translation>
    </message>
    <message>
        <source>Control method</source>
        <translation>Regelungsart</translation>
    </message>
    <message>
        <source>TEC parameter limits</source>
        <translation>TEC-Parametergrenzen</translation>
    </message>
    <message>
        <source>Resistance</source>
        <translation>Wärmewiderstand</translation>
    </message>
    <message>
        <source>Heat Transfer</source>
        <translation>Wärmeübertragung</translation>
    </message>
    <message>
        <source>Phase</source>
        <translation>Phase</translation>
    </message>
    <message>
        <source>Base conductivity</source>
        <translation>Wärmeleitfähigkeit der Grundplatte</translation>
    </message>
    <message>
        <source>Fin conductivity</source>
        <translation>Wärmeleitfähigkeit der Rippen</translation>
    </message>
    <message>
        <source>Base thickness</source>
        <translation>Dicke der Grundplatte</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Solar</source>
        <translation>Sonneneinstrahlung</translation>
    </message>
</context>
<context>
    <name>Clt::VariationType</name>
    <message>
        <source>Constant</source>
        <translation>Konstant</translation>
    </message>
    <message>
        <source>Equation of State</source>
        <translation>Zustandsgleichung</translation>
    </message>
    <message>
        <source>Power Law</source>
        <translation>Potenzgesetz</translation>
    </message>
    <message>
        <source>Sutherland</source>
        <translation>Sutherland</translation>
    </message>
    <message>
        <source>Polynomial</source>
        <translation>Polynom</translation>
    </message>
    <message>
        <source>Polynomial Coefficient</source>
        <translation>Polynomkoeffizient</translation>
    </message>
    <message>
        <source>Inverse Polynomial</source>
        <translation>Inverses Polynom</translation>
    </message>
    <message>
        <source>Adiabatic Equation of State</source>
        <translation>Adiabate Zustandsgleichung</translation>
    </message>
    <message>
        <source>Same as X-dir.</source>
        <translation>Wie X-Richtung</translation>
    </message>
    <message>
        <source>Thermodynamic Tables</source>
        <translation>Thermodynamische Tabellen</translation>
    </message>
    <message>
        <source>Piecewise Linear</source>
        <translation>Stückweise linear</translation>
    </message>
    <message>
        <source>Moist Gas</source>
        <translation>Feuchtes Gas</translation>
    </message>
    <message>
        <source>Arrhenius</source>
        <translation>Arrhenius</translation>
    </message>
    <message>
        <source>Free Area Ratio</source>
        <translation>Freiflächenverhältnis</translation>
    </message>
    <message>
        <source>Friction Factor</source>
        <translation>Reibungsbeiwert</translation>
    </message>
    <message>
        <source>Head Capacity Curve</source>
        <translation>Q-H-Kennlinie</translation>
    </message>
    <message>
        <source>Permeability</source>
        <translation>Permeabilität</translation>
    </message>
    <message>
        <source>NonNewt Pwr Law</source>
        <translation>Nichtnewt. Potenzgesetz</translation>
    </message>
    <message>
        <source>Herschel-Buckley</source>
        <translation>Herschel-Bulkley</translation>
    </message>
    <message>
        <source>Carreau</source>
        <translation>Carreau</translation>
    </message>
    <message>
        <source>1st Order Polymer</source>
        <translation>Polymer 1. Ordnung</translation>
    </message>
    <message>
        <source>2nd Order Polymer</source>
        <translation>Polymer 2. Ordnung</translation>
    </message>
    <message>
        <source>Fan Curve</source>
        <translation>Lüfterkennlinie</translation>
    </message>
    <message>
        <source>Velocity Profile</source>
        <translation>Geschwindigkeitsprofil</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Reciprocating</source>
        <translation>Hin- und hergehend</translation>
    </message>
    <message>
        <source>Oscillating</source>
        <translation>Oszillierend</translation>
    </message>
    <message>
        <source>Constant Angular Speed</source>
        <translation>Konstante Winkelgeschwindigkeit</translation>
    </message>
    <message>
        <source>Constant Linear Speed</source>
        <translation>Konstante Lineargeschwindigkeit</translation>
    </message>
    <message>
        <source>Spring</source>
        <translation>Feder</translation>
    </message>
    <message>
        <source>Torsion Spring</source>
        <translation>Torsionsfeder</translation>
    </message>
    <message>
        <source>Table with Angular Position</source>
        <translation>Tabelle über dem Drehwinkel</translation>
    </message>
    <message>
        <source>Traces And Planes</source>
        <translation>Leiterbahnen und Kupferflächen</translation>
    </message>
    <message>
        <source>Dielectric</source>
        <translation>Dielektrikum</translation>
    </message>
    <message>
        <source>Control Code</source>
        <translation>Regelungscode</translation>
    </message>
    <message>
        <source>Size/NumCouples</source>
        <translation>Größe/Anzahl der Thermopaare</translation>
    </message>
    <message>
        <source>TEC parameter limits</source>
        <translation>TEC-Parametergrenzen</translation>
    </message>
    <message>
        <source>Heat Exchanger</source>
        <translation>Wärmeübertrager</translation>
    </message>
    <message>
        <source>Temperature Change</source>
        <translation>Temperaturänderung</translation>
    </message>
    <message>
        <source>Heat Input/Extraction Rate</source>
        <translation>Zu-/abgeführter Wärmestrom</translation>
    </message>
    <message>
        <source>Air Conditioner</source>
        <translation>Klimagerät</translation>
    </message>
    <message>
        <source>Adiabatic Humidification</source>
        <translation>Adiabate Befeuchtung</translation>
    </message>
    <message>
        <source>Steam Humidification</source>
        <translation>Dampfbefeuchtung</translation>
    </message>
    <message>
        <source>Enthalpy Heat Exchanger</source>
        <translation>Enthalpieübertrager</translation>
    </message>
    <message>
        <source>Dehumidification</source>
        <translation>Entfeuchtung</translation>
    </message>
    <message>
        <source>Vapor Pressure</source>
        <translation>Dampfdruck</translation>
    </message>
    <message>
        <source>Linked Vapor Material</source>
        <translation>Verknüpfter Dampfstoff</translation>
    </message>
    <message>
        <source>Micro Channel</source>
        <translation>Mikrokanal</translation>
    </message>
    <message>
        <source>Pin-Fin in Line</source>
        <translation>Fluchtende Stiftrippen</translation>
    </message>
    <message>
        <source>Pin-Fin Staggered</source>
        <translation>Versetzte Stiftrippen</translation>
    </message>
    <message>
        <source>Offset Strip</source>
        <translation>Versetzte Streifenrippen</translation>
    </message>
    <message>
        <source>Heat Sink Profile</source>
        <translation>Kühlkörperprofil</translation>
    </message>
    <message>
        <source>Solar Window</source>
        <translation>Besonntes Fenster</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Solar Wall</source>
        <translation>Besonnte Wand</translation>
    </message>
</context>
</TS>
