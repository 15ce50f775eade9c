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
<context>
    <name>Nereo::Inspection</name>
    <message>
        <source>a file that can be read</source>
        <translation>eine Datei, die gelesen werden kann</translation>
    </message>
    <message>
        <source>the file can&apos;t be opened: %1</source>
        <translation>Die Datei kann nicht geöffnet werden: %1</translation>
    </message>
    <message>
        <source>the file can&apos;t be read to its end: %1; a load doesn&apos;t notice</source>
        <translation>Die Datei kann nicht bis zum Ende gelesen werden: %1; das Laden bemerkt es nicht</translation>
    </message>
    <message>
        <source>the file can&apos;t be read to its end: %1; a load fails</source>
        <translation>Die Datei kann nicht bis zum Ende gelesen werden: %1; das Laden schlägt fehl</translation>
    </message>
    <message>
        <source>a configuration, a control file, a material database, a geometry and boundary file, or results</source>
        <translation>eine Konfiguration, eine Steuerdatei, eine Stoffdatenbank, eine Geometrie- und Randdatei oder Ergebnisse</translation>
    </message>
    <message>
        <source>the content is of no known kind</source>
        <translation>Der Inhalt ist von keiner bekannten Art</translation>
    </message>
    <message>
        <source>characters in the encoding of the text</source>
        <translation>Zeichen in der Kodierung des Textes</translation>
    </message>
    <message>
        <source>the bytes %1 are no characters in the encoding of the text; they are read as replacement characters</source>
        <translation>Die Bytes %1 sind keine Zeichen in der Kodierung des Textes; sie werden als Ersatzzeichen gelesen</translation>
    </message>
    <message>
        <source>the bytes %1 at the end of the file are no whole character; they are ignored</source>
        <translation>Die Bytes %1 am Ende der Datei sind kein ganzes Zeichen; sie werden übergangen</translation>
    </message>
    <message>
        <source>a line feed behind it</source>
        <translation>ein Zeilenvorschub dahinter</translation>
    </message>
    <message>
        <source>a carriage return that no line feed follows; it is ignored</source>
        <translation>Ein Wagenrücklauf, auf den kein Zeilenvorschub folgt; er wird übergangen</translation>
    </message>
    <message>
        <source>a character of a text</source>
        <translation>ein Zeichen eines Textes</translation>
    </message>
    <message>
        <source>a NUL in the text; it is read as a character</source>
        <translation>Ein NUL im Text; es wird als Zeichen gelesen</translation>
    </message>
    <message>
        <source>a byte-order mark at the start of a value; it is ignored</source>
        <translation>Eine Byte-Reihenfolge-Marke am Anfang eines Werts; sie wird übergangen</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>eine ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number; it is read as 0</source>
        <translation>„%1“ ist keine ganze Zahl; gelesen wird 0</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number; it is read as %2</source>
        <translation>„%1“ ist keine ganze Zahl; gelesen wird %2</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number; it is read as 0</source>
        <translation>„%1“ ist keine Zahl; gelesen wird 0</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number; it is read as %2</source>
        <translation>„%1“ ist keine Zahl; gelesen wird %2</translation>
    </message>
    <message>
        <source>a whole number from -2147483648 to 2147483647</source>
        <translation>eine ganze Zahl von -2147483648 bis 2147483647</translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold; it is read as 0</source>
        <translation>%1 ist mehr, als 32 Bit fassen; gelesen wird 0</translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold; it is read as %2</source>
        <translation>%1 ist mehr, als 32 Bit fassen; gelesen wird %2</translation>
    </message>
    <message>
        <source>a number up to 1.79769e+308</source>
        <translation>eine Zahl bis 1.79769e+308</translation>
    </message>
    <message>
        <source>%1 is larger than any number; it is read as infinite</source>
        <translation>%1 ist größer als jede Zahl; gelesen wird unendlich</translation>
    </message>
    <message>
        <source>a number from 2.22507e-308 to 1.79769e+308</source>
        <translation>eine Zahl von 2.22507e-308 bis 1.79769e+308</translation>
    </message>
    <message>
        <source>%1 is outside the range of numbers; it is read as 0</source>
        <translation>%1 liegt außerhalb des Zahlenbereichs; gelesen wird 0</translation>
    </message>
    <message>
        <source>a value</source>
        <translation>ein Wert</translation>
    </message>
    <message>
        <source>a value is missing; it is read as 0</source>
        <translation>Ein Wert fehlt; gelesen wird 0</translation>
    </message>
    <message>
        <source>the suffix &quot;xml&quot;</source>
        <translation>die Endung „xml“</translation>
    </message>
    <message>
        <source>the content is XML; without the suffix &quot;xml&quot; a load takes it for text and throws</source>
        <translation>Der Inhalt ist XML; ohne die Endung „xml“ hält ihn das Laden für Text und wirft eine Ausnahme</translation>
    </message>
    <message>
        <source>another suffix than &quot;xml&quot;</source>
        <translation>eine andere Endung als „xml“</translation>
    </message>
    <message>
        <source>the content is no XML; with the suffix &quot;xml&quot; a load takes it for that and fails</source>
        <translation>Der Inhalt ist kein XML; mit der Endung „xml“ hält ihn das Laden dafür und schlägt fehl</translation>
    </message>
    <message>
        <source>a setting&apos;s key</source>
        <translation>der Schlüssel einer Einstellung</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no setting; it is ignored</source>
        <translation>„%1“ ist keine Einstellung; sie wird übergangen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no setting; a load throws</source>
        <translation>„%1“ ist keine Einstellung; das Laden wirft eine Ausnahme</translation>
    </message>
    <message>
        <source>each setting once</source>
        <translation>jede Einstellung einmal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is set again; the earlier value is ignored</source>
        <translation>„%1“ wird noch einmal gesetzt; der frühere Wert zählt nicht</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>blanks or empty lines behind the last line; a load throws</source>
        <translation>Leerzeichen oder leere Zeilen hinter der letzten Zeile; das Laden wirft eine Ausnahme</translation>
    </message>
    <message>
        <source>well-formed XML</source>
        <translation>wohlgeformtes XML</translation>
    </message>
    <message>
        <source>%2; a load fails</source>
        <translation>%2; das Laden schlägt fehl</translation>
    </message>
    <message>
        <source>an element &quot;%2&quot;</source>
        <translation>ein Element „%2“</translation>
    </message>
    <message>
        <source>there is no element &quot;%2&quot; in the document; all of it is ignored</source>
        <translation>Das Dokument hat kein Element „%2“; alles darin wird übergangen</translation>
    </message>
    <message>
        <source>text only</source>
        <translation>nur Text</translation>
    </message>
    <message>
        <source>an element &quot;%1&quot; stands inside of a value; a load fails</source>
        <translation>Ein Element „%1“ steht in einem Wert; das Laden schlägt fehl</translation>
    </message>
    <message>
        <source>four whole numbers joined by dots</source>
        <translation>vier ganze Zahlen mit Punkten dazwischen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t four whole numbers joined by dots; it is read as %2</source>
        <translation>„%1“ sind nicht vier ganze Zahlen mit Punkten dazwischen; gelesen wird %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t four whole numbers joined by dots; it is ignored</source>
        <translation>„%1“ sind nicht vier ganze Zahlen mit Punkten dazwischen; es wird übergangen</translation>
    </message>
    <message>
        <source>the end of the line</source>
        <translation>das Ende der Zeile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the items of the line; it is ignored</source>
        <translation>„%1“ steht hinter den Angaben der Zeile; es wird übergangen</translation>
    </message>
    <message>
        <source>the next section</source>
        <translation>der nächste Abschnitt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the lines of the section; it is ignored</source>
        <translation>„%1“ steht hinter den Zeilen des Abschnitts; es wird übergangen</translation>
    </message>
    <message>
        <source>a load doesn&apos;t take the content of the section &quot;%1&quot;</source>
        <translation>Das Laden übernimmt den Inhalt des Abschnitts „%1“ nicht</translation>
    </message>
    <message>
        <source>what a writer puts there</source>
        <translation>was beim Schreiben dort hinkommt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t what a writer puts into the first lines</source>
        <translation>„%1“ ist nicht, was beim Schreiben in die ersten Zeilen kommt</translation>
    </message>
    <message>
        <source>the title of a section</source>
        <translation>der Titel eines Abschnitts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no title of a section; what stands up to the next one is ignored</source>
        <translation>„%1“ ist kein Titel eines Abschnitts; alles bis zum nächsten wird übergangen</translation>
    </message>
    <message>
        <source>the title of a known section</source>
        <translation>der Titel eines bekannten Abschnitts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no section; it is ignored</source>
        <translation>„%1“ ist kein Abschnitt; er wird übergangen</translation>
    </message>
    <message>
        <source>each section once</source>
        <translation>jeder Abschnitt einmal</translation>
    </message>
    <message>
        <source>the section &quot;%1&quot; stands in the file again; what it says again overrides the earlier one</source>
        <translation>Der Abschnitt „%1“ steht noch einmal in der Datei; was er noch einmal sagt, ersetzt das frühere</translation>
    </message>
    <message>
        <source>each section that a writer writes</source>
        <translation>jeder Abschnitt, der geschrieben wird</translation>
    </message>
    <message>
        <source>the section &quot;%2&quot; is missing</source>
        <translation>Der Abschnitt „%2“ fehlt</translation>
    </message>
    <message>
        <source>a variable of the section</source>
        <translation>eine Variable des Abschnitts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable of the section; the line is ignored</source>
        <translation>„%1“ ist keine Variable des Abschnitts; die Zeile wird übergangen</translation>
    </message>
    <message>
        <source>a variable</source>
        <translation>eine Variable</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable; the name is kept</source>
        <translation>„%1“ ist keine Variable; der Name bleibt erhalten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no variable; it is read as kNone</source>
        <translation>„%1“ ist keine Variable; gelesen wird kNone</translation>
    </message>
    <message>
        <source>a variable or a flag of nodes</source>
        <translation>eine Variable oder ein Kennzeichen von Knoten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a variable nor a flag</source>
        <translation>„%1“ ist weder eine Variable noch ein Kennzeichen</translation>
    </message>
    <message>
        <source>each variable once</source>
        <translation>jede Variable einmal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands in the section again; the earlier one is ignored</source>
        <translation>„%1“ steht noch einmal im Abschnitt; die frühere Angabe zählt nicht</translation>
    </message>
    <message>
        <source>0 or 1</source>
        <translation>0 oder 1</translation>
    </message>
    <message>
        <source>%1 is neither 0 nor 1; it is read as 0</source>
        <translation>%1 ist weder 0 noch 1; gelesen wird 0</translation>
    </message>
    <message>
        <source>the number of the flags</source>
        <translation>die Anzahl der Kennzeichen</translation>
    </message>
    <message>
        <source>%2 flags are announced and %1 are there; a load stops the process</source>
        <translation>%2 Kennzeichen sind angekündigt und %1 sind da; das Laden hält den Prozess an</translation>
    </message>
    <message>
        <source>each flag once</source>
        <translation>jedes Kennzeichen einmal</translation>
    </message>
    <message>
        <source>there is another flag &quot;%1&quot; before; a look-up by name gives that one</source>
        <translation>Es gibt davor schon ein Kennzeichen „%1“; die Suche nach dem Namen findet jenes</translation>
    </message>
    <message>
        <source>a material as a writer writes it</source>
        <translation>ein Stoff, wie er geschrieben wird</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t what a writer puts there</source>
        <translation>„%1“ ist nicht, was beim Schreiben dort hinkommt</translation>
    </message>
    <message>
        <source>an element that belongs there</source>
        <translation>ein Element, das dort hingehört</translation>
    </message>
    <message>
        <source>an element &quot;%1&quot; doesn&apos;t belong there; it is ignored</source>
        <translation>Ein Element „%1“ gehört dort nicht hin; es wird übergangen</translation>
    </message>
    <message>
        <source>the element once</source>
        <translation>das Element einmal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands there again; the earlier one is ignored</source>
        <translation>„%1“ steht dort noch einmal; das frühere zählt nicht</translation>
    </message>
    <message>
        <source>a type of material</source>
        <translation>eine Art von Stoff</translation>
    </message>
    <message>
        <source>a type of variation</source>
        <translation>eine Art von Verlauf</translation>
    </message>
    <message>
        <source>a type of property</source>
        <translation>eine Art von Eigenschaft</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of property; a load fails</source>
        <translation>„%1“ ist keine Art von Eigenschaft; das Laden schlägt fehl</translation>
    </message>
    <message>
        <source>a property that the type of material has</source>
        <translation>eine Eigenschaft, die diese Art von Stoff hat</translation>
    </message>
    <message>
        <source>a material of this type has no property &quot;%1&quot;; a save loses its type</source>
        <translation>Ein Stoff dieser Art hat keine Eigenschaft „%1“; beim Speichern geht ihre Art verloren</translation>
    </message>
    <message>
        <source>each property once</source>
        <translation>jede Eigenschaft einmal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has one place in memory with an earlier property; it overrides that one</source>
        <translation>„%1“ hat denselben Platz im Speicher wie eine frühere Eigenschaft; sie ersetzt jene</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t used here; a save loses it</source>
        <translation>„%1“ wird hier nicht gebraucht; beim Speichern geht es verloren</translation>
    </message>
    <message>
        <source>x and y</source>
        <translation>x und y</translation>
    </message>
    <message>
        <source>the point has no %2; it is read as 0</source>
        <translation>Der Punkt hat kein %2; gelesen wird 0</translation>
    </message>
    <message>
        <source>an x above that of the point before</source>
        <translation>ein x über dem des Punktes davor</translation>
    </message>
    <message>
        <source>x is %1 and doesn&apos;t rise from the point before</source>
        <translation>x ist %1 und steigt nicht gegenüber dem Punkt davor</translation>
    </message>
    <message>
        <source>a name of its own</source>
        <translation>ein eigener Name</translation>
    </message>
    <message>
        <source>there is another material &quot;%1&quot; before</source>
        <translation>Es gibt davor schon einen Stoff „%1“</translation>
    </message>
    <message>
        <source>a number of its own</source>
        <translation>eine eigene Nummer</translation>
    </message>
    <message>
        <source>there is another material with the id %1 before</source>
        <translation>Es gibt davor schon einen Stoff mit der Nummer %1</translation>
    </message>
    <message>
        <source>one of %2</source>
        <translation>eines von %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; isn&apos;t one of %2</source>
        <translation>„%1“ ist keines von %2</translation>
    </message>
    <message>
        <source>-1</source>
        <translation>-1</translation>
    </message>
    <message>
        <source>UTF-8</source>
        <translation>UTF-8</translation>
    </message>
    <message>
        <source>the bytes %1 are no UTF-8; they are read as replacement characters</source>
        <translation>Die Bytes %1 sind kein UTF-8; sie werden als Ersatzzeichen gelesen</translation>
    </message>
    <message>
        <source>the marker is %1 instead of -1; nothing behind it is read</source>
        <translation>Die Marke ist %1 statt -1; dahinter wird nichts gelesen</translation>
    </message>
    <message>
        <source>the byte order of the file</source>
        <translation>die Byte-Reihenfolge der Datei</translation>
    </message>
    <message>
        <source>the counts make sense only in the other byte order than the first word says</source>
        <translation>Die Anzahlen haben nur in der anderen Byte-Reihenfolge Sinn, als das erste Wort sagt</translation>
    </message>
    <message>
        <source>all that the counts announce</source>
        <translation>alles, was die Anzahlen ankündigen</translation>
    </message>
    <message>
        <source>the file ends early: %1 of %2 records are whole; what is missing is read as 0</source>
        <translation>Die Datei endet zu früh: %1 von %2 Sätzen sind ganz; was fehlt, wird als 0 gelesen</translation>
    </message>
    <message>
        <source>0 or more</source>
        <translation>0 oder mehr</translation>
    </message>
    <message>
        <source>the count is %1; a load stops the process</source>
        <translation>Die Anzahl ist %1; das Laden hält den Prozess an</translation>
    </message>
    <message>
        <source>the count is %1; no record is read</source>
        <translation>Die Anzahl ist %1; kein Satz wird gelesen</translation>
    </message>
    <message>
        <source>a field variable</source>
        <translation>eine Feldvariable</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no field variable; its values are ignored</source>
        <translation>„%1“ ist keine Feldvariable; ihre Werte werden übergangen</translation>
    </message>
    <message>
        <source>each field once</source>
        <translation>jedes Feld einmal</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a field that stands there before; a load stops the process</source>
        <translation>„%1“ ist ein Feld, das schon davor steht; das Laden hält den Prozess an</translation>
    </message>
    <message>
        <source>a node from 1 to %2</source>
        <translation>ein Knoten von 1 bis %2</translation>
    </message>
    <message>
        <source>node %1 is outside 1 to %2 (%3 such records); a load stops the process</source>
        <translation>Knoten %1 liegt außerhalb von 1 bis %2 (%3 solche Sätze); das Laden hält den Prozess an</translation>
    </message>
    <message>
        <source>node %1 is outside 1 to %2 (%3 such records)</source>
        <translation>Knoten %1 liegt außerhalb von 1 bis %2 (%3 solche Sätze)</translation>
    </message>
    <message>
        <source>a record of each node</source>
        <translation>ein Satz für jeden Knoten</translation>
    </message>
    <message>
        <source>%2 nodes have no record, the first is %1; their values are 0</source>
        <translation>%2 Knoten haben keinen Satz, der erste ist %1; ihre Werte sind 0</translation>
    </message>
    <message>
        <source>one record of each node</source>
        <translation>ein einziger Satz für jeden Knoten</translation>
    </message>
    <message>
        <source>%2 records are of a node that has one before, the first of node %1; the earlier values are ignored</source>
        <translation>%2 Sätze sind von einem Knoten, der schon einen hat, der erste von Knoten %1; die früheren Werte zählen nicht</translation>
    </message>
    <message>
        <source>finite numbers</source>
        <translation>endliche Zahlen</translation>
    </message>
    <message>
        <source>%1 values of the field are no finite numbers, the first at node %2</source>
        <translation>%1 Werte des Feldes sind keine endlichen Zahlen, der erste bei Knoten %2</translation>
    </message>
    <message>
        <source>%1 bytes stand behind the last record; they are ignored</source>
        <translation>%1 Bytes stehen hinter dem letzten Satz; sie werden übergangen</translation>
    </message>
    <message>
        <source>%3</source>
        <translation>%3</translation>
    </message>
    <message>
        <source>did you mean &quot;%1&quot;?</source>
        <translation>Ist „%1“ gemeint?</translation>
    </message>
    <message>
        <source>the bytes %1 are no characters in the encoding of the text</source>
        <translation>Die Bytes %1 sind keine Zeichen in der Kodierung des Textes</translation>
    </message>
    <message>
        <source>a carriage return that no line feed follows</source>
        <translation>Ein Wagenrücklauf, auf den kein Zeilenvorschub folgt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number</source>
        <translation>„%1“ ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>%1 is more than 32 bits hold</source>
        <translation>%1 ist mehr, als 32 Bit fassen</translation>
    </message>
    <message>
        <source>%1 is outside the range of numbers</source>
        <translation>%1 liegt außerhalb des Zahlenbereichs</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>Ein Wert fehlt</translation>
    </message>
    <message>
        <source>a name in double quotes</source>
        <translation>ein Name in Anführungszeichen (&quot;)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where a name in double quotes is missing</source>
        <translation>„%1“ steht, wo ein Name in Anführungszeichen (&quot;) fehlt</translation>
    </message>
    <message>
        <source>%2</source>
        <translation>%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where a writer puts %2</source>
        <translation>„%1“ steht, wo beim Schreiben %2 hinkommt</translation>
    </message>
    <message>
        <source>the file ends where a writer puts %2</source>
        <translation>Die Datei endet, wo beim Schreiben %2 hinkommt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the items of the line</source>
        <translation>„%1“ steht hinter den Angaben der Zeile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind the lines of the section</source>
        <translation>„%1“ steht hinter den Zeilen des Abschnitts</translation>
    </message>
    <message>
        <source>%2 again</source>
        <translation>noch einmal %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where the coordinate system %2 should stand again</source>
        <translation>„%1“ steht, wo das Koordinatensystem %2 noch einmal stehen sollte</translation>
    </message>
    <message>
        <source>the list before has no -1 at its end</source>
        <translation>Die Liste davor hat keine -1 am Ende</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands where the list should end with -1</source>
        <translation>„%1“ steht, wo die Liste mit -1 enden sollte</translation>
    </message>
    <message>
        <source>a value is missing; %2 is read for it</source>
        <translation>ein Wert fehlt; %2 wird dafür gelesen</translation>
    </message>
    <message>
        <source>a value is missing; it is read as empty</source>
        <translation>ein Wert fehlt; er wird als leer gelesen</translation>
    </message>
    <message>
        <source>the lines of the section</source>
        <translation>die Zeilen des Abschnitts</translation>
    </message>
    <message>
        <source>the file ends behind the title of the section; nothing is read for it</source>
        <translation>die Datei endet hinter dem Titel des Abschnitts; für ihn wird nichts gelesen</translation>
    </message>
    <message>
        <source>the file ends before the title of the first section</source>
        <translation>die Datei endet vor dem Titel des ersten Abschnitts</translation>
    </message>
    <message>
        <source>so are those behind it</source>
        <translation>ebenso die dahinter</translation>
    </message>
    <message>
        <source>a load takes the next line for it, and so on for those below</source>
        <translation>beim Laden tritt die nächste Zeile an seine Stelle, und so fort bei denen darunter</translation>
    </message>
    <message>
        <source>what is left of it is read for the values behind it:</source>
        <translation>der Rest davon wird für die Werte dahinter gelesen:</translation>
    </message>
    <message>
        <source>a load takes the next line for it:</source>
        <translation>beim Laden tritt die nächste Zeile an seine Stelle:</translation>
    </message>
    <message>
        <source>the version is read as %1</source>
        <translation>als Version wird %1 gelesen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a flag of nodes; it is read as %2</source>
        <translation>„%1“ ist eine Markierung von Knoten; gelesen wird %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of material; a save loses the reference values and the types of the properties</source>
        <translation>„%1“ ist keine Materialart; beim Speichern gehen die Bezugswerte und die Arten der Eigenschaften verloren</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no type of variation; a save loses the value and the curve of the property</source>
        <translation>„%1“ ist keine Art der Veränderung; beim Speichern gehen der Wert und die Kurve der Eigenschaft verloren</translation>
    </message>
    <message>
        <source>a material of this type has no property &quot;%1&quot;; it is read, and saved, as &quot;%2&quot;</source>
        <translation>ein Material dieser Art hat keine Eigenschaft „%1“; sie wird als „%2“ gelesen und gespeichert</translation>
    </message>
    <message>
        <source>the independent variable of the points is missing; it is kNone</source>
        <translation>die unabhängige Variable der Punkte fehlt; sie ist kNone</translation>
    </message>
    <message>
        <source>at most %2 values in a field</source>
        <translation>höchstens %2 Werte in einem Feld</translation>
    </message>
    <message>
        <source>a field of %1 values is more than the %2 that there can be; a load throws</source>
        <translation>Ein Feld von %1 Werten ist größer als die %2, die es geben kann; das Laden wirft eine Ausnahme</translation>
    </message>
    <message>
        <source>%5 is &quot;%1&quot; in %4, but %6 is &quot;%3&quot; in %2</source>
        <translation>%5 ist „%1“ in %4, aber %6 ist „%3“ in %2</translation>
    </message>
    <message>
        <source>the version is %1 in %4, but %3 in %2</source>
        <translation>Die Version ist %1 in %4, aber %3 in %2</translation>
    </message>
    <message>
        <source>%5 is %1 in %4, but %6 is %3 in %2</source>
        <translation>%5 ist %1 in %4, aber %6 ist %3 in %2</translation>
    </message>
    <message>
        <source>the material &quot;%1&quot; stands in %3, but not in %2</source>
        <translation>Der Stoff „%1“ steht in %3, aber nicht in %2</translation>
    </message>
    <message>
        <source>the material &quot;%3&quot;</source>
        <translation>der Stoff „%3“</translation>
    </message>
    <message>
        <source>the material &quot;%3&quot; stands in %2, but not in %4</source>
        <translation>Der Stoff „%3“ steht in %2, aber nicht in %4</translation>
    </message>
    <message>
        <source>there are %1 nodes in %4, but %3 in %2</source>
        <translation>Es sind %1 Knoten in %4, aber %3 in %2</translation>
    </message>
    <message>
        <source>the name of the job</source>
        <translation>der Name des Auftrags</translation>
    </message>
    <message>
        <source>the program that writes the file</source>
        <translation>das schreibende Programm</translation>
    </message>
    <message>
        <source>&quot;Version&quot; and the version</source>
        <translation>„Version“ und die Version</translation>
    </message>
    <message>
        <source>an empty line</source>
        <translation>eine leere Zeile</translation>
    </message>
    <message>
        <source>a section&apos;s title</source>
        <translation>ein Abschnittstitel</translation>
    </message>
    <message>
        <source>%1 is neither 0 nor 1; it is ignored</source>
        <translation>%1 ist weder 0 noch 1; es wird übergangen</translation>
    </message>
    <message>
        <source>the file ends early: %1 of %2 records are whole; without a known field no value is missing</source>
        <translation>Die Datei endet zu früh: %1 von %2 Sätzen sind ganz; ohne ein bekanntes Feld fehlt kein Wert</translation>
    </message>
    <message>
        <source>%2 nodes have no record, the first is %1; without a known field no value is missing</source>
        <translation>%2 Knoten haben keinen Satz, der erste ist %1; ohne ein bekanntes Feld fehlt kein Wert</translation>
    </message>
    <message>
        <source>%2 records are of a node that has one before, the first of node %1; without a known field no value is ignored</source>
        <translation>%2 Sätze sind von einem Knoten, der schon einen hat, der erste von Knoten %1; ohne ein bekanntes Feld geht kein Wert verloren</translation>
    </message>
    <message>
        <source>no carriage return</source>
        <translation>kein Wagenrücklauf</translation>
    </message>
    <message>
        <source>a carriage return in a value; a save loses it</source>
        <translation>Ein Wagenrücklauf in einem Wert; beim Speichern geht er verloren</translation>
    </message>
    <message>
        <source>a blank, three asterisks and a blank before the name</source>
        <translation>ein Leerzeichen, drei Sterne und ein Leerzeichen vor dem Namen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no title; it and what follows are taken for a part of the section before</source>
        <translation>„%1“ ist kein Titel; die Zeile und was ihr folgt gelten als Teil des Abschnitts davor</translation>
    </message>
    <message>
        <source>something is missing that a writer puts there</source>
        <translation>Es fehlt etwas, das beim Schreiben dort steht</translation>
    </message>
    <message>
        <source>characters without the byte 0D</source>
        <translation>Zeichen ohne das Byte 0D</translation>
    </message>
    <message>
        <source>a byte of the character is 0D, which a load leaves out; from there on it reads other characters</source>
        <translation>ein Byte des Zeichens ist 0D, das das Laden auslässt; von da an liest es andere Zeichen</translation>
    </message>
    <message>
        <source>a load leaves out bytes 0D of characters, the first in line %1</source>
        <translation>das Laden lässt Bytes 0D von Zeichen aus, das erste in Zeile %1</translation>
    </message>
    <message>
        <source>a load stops the process</source>
        <translation>das Laden hält den Prozess an</translation>
    </message>
    <message>
        <source>a load throws</source>
        <translation>das Laden wirft eine Ausnahme</translation>
    </message>
    <message>
        <source>those behind it are read as</source>
        <translation>die dahinter werden gelesen als</translation>
    </message>
    <message>
        <source>what a load doesn&apos;t find is read as 0</source>
        <translation>was das Laden nicht findet, wird als 0 gelesen</translation>
    </message>
    <message>
        <source>a NUL in the text</source>
        <translation>ein NUL im Text</translation>
    </message>
    <message>
        <source>a line is missing before it, and the first title with what stands up to the next one is ignored</source>
        <translation>davor fehlt eine Zeile; der erste Titel und was bis zum nächsten steht, wird übergangen</translation>
    </message>
    <message>
        <source>a NUL in the name of an attribute, which is ignored</source>
        <translation>Ein NUL im Namen eines Attributs, das übergangen wird</translation>
    </message>
    <message>
        <source>a writer puts the section &quot;%1&quot; here</source>
        <translation>hier schreibt ein Programm den Abschnitt „%1“</translation>
    </message>
</context>
</TS>
