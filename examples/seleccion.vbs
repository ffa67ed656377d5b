' El programa mas corto: una tabla en memoria, de la que se elige un articulo y en la que se busca. Con cscript.
Option Explicit

Class Campo ' del registro actual; tambien sirve de columna
    Public Name
    Public Caption
    Public DataField
    Public Value
End Class

Class Campos
    Public Property Get Count : Count = 2 : End Property
    Public Function Item(numero)
        Dim nombres, valores
        nombres = Array("Codigo", "Nombre")
        valores = Split(articulos.Filas(articulos.AbsolutePosition - 1))
        Set Item = New Campo
        Item.Name = nombres(numero)
        Item.Caption = Item.Name
        Item.DataField = Item.Name
        Item.Value = valores(numero)
    End Function
End Class

Class Tabla ' la clase de datos, que es su propio conjunto de registros
    Public Filas
    Public AbsolutePosition
    Public Property Get sClassName : sClassName = "articulos" : End Property
    Public Property Get RecordCount : RecordCount = UBound(Filas) + 1 : End Property
    Public Property Get BOF : BOF = AbsolutePosition < 1 : End Property
    Public Property Get EOF : EOF = AbsolutePosition > RecordCount : End Property
    Public Property Get Fields : Set Fields = New Campos : End Property
    Public Sub MoveFirst : AbsolutePosition = 1 : End Sub
    Public Sub MoveNext : AbsolutePosition = AbsolutePosition + 1 : End Sub
    Public Sub Requery(consulta) : MoveFirst : End Sub
    Public Sub FindRecord(texto) : MoveFirst : End Sub
    Public Sub AplyFilter(filtro) : MoveFirst : End Sub
End Class

Dim articulos
Set articulos = New Tabla
articulos.Filas = Array("A-1 Tornillo", "A-2 Tuerca", "A-3 Arandela")
articulos.MoveFirst

Class Pantalla ' el control que pide el registro, y quien recibe la respuesta
    Public Text
    Public Sub AceptarSeleccion(indice, ctl, valor) : Text = valor : End Sub
    Public Sub AceptarBuscar : End Sub
End Class

Class Busqueda ' la clase de datos del panel que busca, que pasa otros argumentos
    Public Filtro
    Public Property Get sClassName : sClassName = "articulos" : End Property
    Public Function ValidaKey(caja, tecla) : ValidaKey = True : End Function
    Public Function ValidaValue(caja) : ValidaValue = True : End Function
    Public Function ValidaDefinedSize(caja) : ValidaDefinedSize = 20 : End Function
    Public Function CreateFilter(caja, cual)
        Dim signos
        signos = Array("=", ">=", "<=")
        If caja.Text <> "" Then CreateFilter = caja.DataField & signos(cual) & caja.Text
    End Function
    Public Sub SetFilter(nuevo, hueco) : Filtro = nuevo : End Sub
    Public Function GetFilter(hueco) : GetFilter = Filtro : End Function
    Public Sub AplyFilter(nuevo) : End Sub
End Class

Dim campo, busca, dialogos
Set campo = New Pantalla
Set busca = New Busqueda
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
dialogos.ShowSelec campo, articulos, campo
WScript.Echo "Elegido: " & campo.Text
dialogos.ShowBuscar campo, busca, articulos.Fields
WScript.Echo "Filtro: " & busca.Filtro
