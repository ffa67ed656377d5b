// El programa más corto en C#: una tabla en memoria, de la que se elige un artículo y en la que se busca.
//   csc /r:Microsoft.CSharp.dll /platform:x86 seleccion.cs    (x64, si se usa Tamvelo64.dll)
using System;
using System.Runtime.InteropServices;

/// Un campo del registro actual; también sirve de columna.
[ComVisible(true)]
public class Campo
{
    readonly Tabla tabla;
    readonly int numero;
    public Campo(Tabla tabla, int numero) { this.tabla = tabla; this.numero = numero; }
    public string Name { get { return numero == 0 ? "Codigo" : "Nombre"; } }
    public string Caption { get { return Name; } }
    public string DataField { get { return Name; } }
    public object Value { get { return tabla.Filas[tabla.AbsolutePosition - 1][numero]; } }
}

[ComVisible(true)]
public class Campos
{
    readonly Tabla tabla;
    public Campos(Tabla tabla) { this.tabla = tabla; }
    public int Count { get { return 2; } }
    public object Item(int numero) { return new Campo(tabla, numero); }
}

/// La clase de datos, que es su propio conjunto de registros.
[ComVisible(true)]
public class Tabla
{
    internal readonly string[][] Filas =
        { new[] { "A-1", "Tornillo" }, new[] { "A-2", "Tuerca" }, new[] { "A-3", "Arandela" } };
    string filtro = "";
    public Tabla() { AbsolutePosition = 1; }
    public string sClassName { get { return "articulos"; } }
    public int RecordCount { get { return Filas.Length; } }
    public int AbsolutePosition { get; set; }
    public bool BOF { get { return AbsolutePosition < 1; } }
    public bool EOF { get { return AbsolutePosition > Filas.Length; } }
    public object Fields { get { return new Campos(this); } }
    public void MoveFirst() { AbsolutePosition = 1; }
    public void MoveNext() { AbsolutePosition++; }
    public void Requery(object consulta = null) { MoveFirst(); }
    public void FindRecord(object texto, object columna = null) { MoveFirst(); }
    public bool ValidaKey(object caja, object tecla) { return true; }
    public bool ValidaValue(object caja) { return true; }
    public int ValidaDefinedSize(object caja) { return 20; }
    public string CreateFilter(dynamic caja, object cual = null)
    {
        return caja.Text == "" ? "" : caja.DataField + "=" + caja.Text;
    }
    public void SetFilter(object nuevo, object hueco) { filtro = (string)nuevo; }
    public string GetFilter(object hueco) { return filtro; }
    public void AplyFilter(object nuevo) { MoveFirst(); }
}

/// El control que pide el registro, y quien recibe la respuesta.
[ComVisible(true)]
public class Pantalla
{
    public Pantalla() { Text = ""; }
    public string Text { get; set; }
    public void AceptarSeleccion(object indice, object ctl, object valor) { Text = (string)valor; }
    public void AceptarBuscar() { }
}

public static class Seleccion
{
    [STAThread]
    public static void Main()
    {
        var pantalla = new Pantalla();
        var articulos = new Tabla();
        dynamic dialogos = Activator.CreateInstance(Type.GetTypeFromProgID("Tamvelo.ClsShowSerch"));
        dialogos.ShowSelec(pantalla, articulos, pantalla);
        Console.WriteLine("Elegido: " + pantalla.Text);
        dialogos.ShowBuscar(pantalla, articulos, articulos.Fields);
        Console.WriteLine("Filtro: " + articulos.GetFilter("Filter"));
    }
}
